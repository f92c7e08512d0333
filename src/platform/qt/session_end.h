#pragma once

#include <functional>

class QGuiApplication;
class QObject;

namespace veldra {

/// Calls back when the desktop's session ends, as long as `context` lives. The desktop is told not
/// to start the program again by itself.
void follow_session_end(const QGuiApplication& application, QObject& context,
                        std::function<void()> ended);

}  // namespace veldra
