#pragma once

#include <string>
#include <vector>

#include "text/user_interface.h"

namespace veldra::test {

/// Remembers the boxes shown and answers all of them the same.
class RecordingInterface final : public UserInterface {
 public:
    bool message_box(MessageStyle style, const std::string& title,
                     const std::string& text) override {
        styles.push_back(style);
        titles.push_back(title);
        texts.push_back(text);
        return answer;
    }
    void set_mouse_pointer(int pointer) override { pointers.push_back(pointer); }

    bool answer = true;
    std::vector<MessageStyle> styles;
    std::vector<std::string> titles;
    std::vector<std::string> texts;
    std::vector<int> pointers;
};

}  // namespace veldra::test
