#pragma once

#include <functional>
#include <string>

#include "model/text_measurer.h"
#include "text/user_interface.h"

namespace veldra {

class FileWatch;
class Printer;
class PrintDialog;

/// What commands need of the program around the session.
struct Desk {
    TextMeasurer& measurer;
    UserInterface& ui;
    std::function<void()> redraw;         ///< draws the picture of the session as it stands
    Printer* printer = nullptr;           ///< the application printer; null: the system has none
    PrintDialog* print_dialog = nullptr;  ///< there as soon as there is a printer
    FileWatch* watch = nullptr;           ///< of the open file; null: it is not watched
    std::string rescue_folder = {};  ///< takes working copies that find no room beside their file
};

}  // namespace veldra
