#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "model/text_measurer.h"
#include "text/user_interface.h"

namespace veldra {

class FileWatch;
class Printer;
class PrintDialog;

/// What the user wants done with the open file's state that its file cannot take.
struct UnwrittenAnswer {
    enum class Choice : std::uint8_t {
        again,      ///< the file is to be tried once more
        elsewhere,  ///< the state goes to `path`
        discard,    ///< it is given up
        nobody,     ///< there is nobody to ask any more
    };
    Choice choice = Choice::nobody;
    std::string path;
};

/// What commands need of the program around the session.
struct Desk {
    TextMeasurer& measurer;
    UserInterface& ui;
    std::function<void()> redraw;         ///< draws the picture of the session as it stands
    Printer* printer = nullptr;           ///< the application printer; null: the system has none
    PrintDialog* print_dialog = nullptr;  ///< there as soon as there is a printer
    FileWatch* watch = nullptr;           ///< of the open file; null: it is not watched
    std::string rescue_folder = {};  ///< takes working copies that find no room beside their file
    /// Asks, under a text that says why the file cannot take the state; empty: nobody is there.
    std::function<UnwrittenAnswer(const std::string& text)> ask_unwritten = {};
};

}  // namespace veldra
