#pragma once

#include <string>

namespace veldra {

/// Styles of a message box.
enum class MessageStyle {
    critical = 16,
    question_yes_no = 36,
    exclamation = 48,
    information = 64,
    question_no_yes = 292  ///< as question_yes_no, with No as the answer of the Return key
};

/// What the modules ask of the user's desktop. Texts are UTF-8. A program without a window gives
/// an implementation that writes to its standard error.
class UserInterface {
 public:
    virtual ~UserInterface() = default;
    /// Shows a box and waits; true for Yes on a question, true otherwise.
    virtual bool message_box(MessageStyle style, const std::string& title,
                             const std::string& text) = 0;
    /// Mouse pointer of the picture: 0 default, 11 hourglass. Takes effect at once.
    virtual void set_mouse_pointer(int pointer) = 0;
};

}  // namespace veldra
