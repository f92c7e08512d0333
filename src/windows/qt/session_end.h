#pragma once

#include <functional>

class QGuiApplication;
class QObject;

namespace veldra {

/// Calls back when the desktop's session ends, as long as `context` lives. The desktop goes on when
/// `ended` returns, so all that is to be kept should have been written by then. If that cannot be
/// while `ended` runs, it returns false, and the desktop asks once more when the other programs are
/// through; the answer then counts in any case. The desktop is told not to start the program again
/// by itself.
void follow_session_end(const QGuiApplication& application, QObject& context,
                        std::function<bool()> ended);

}  // namespace veldra
