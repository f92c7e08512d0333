#pragma once

#include <QAction>
#include <QMainWindow>
#include <QToolBar>
#include <array>
#include <functional>
#include <map>

#include "model/window_state.h"

namespace veldra {

/// What a menu entry or a button does when it is chosen.
using Command = std::function<void()>;

/// The menu bar and the toolbar of the main window, built from the tables in the source file.
/// Entries and buttons without a command stay disabled whatever the session says.
class TorvelCommands {
 public:
    TorvelCommands(QMainWindow& window, std::map<MenuItem, Command> menu_commands,
                   std::map<ToolButton, Command> tool_commands);

    /// Brings enabling, visibility, check marks and texts into line.
    void synchronise(const WindowState& state);

 private:
    void build_menus(QMainWindow& window);
    void build_toolbar(QMainWindow& window);

    std::map<MenuItem, Command> menu_commands_;
    std::map<ToolButton, Command> tool_commands_;
    std::array<QAction*, static_cast<std::size_t>(MenuItem::count)> menu_{};
    std::array<QAction*, static_cast<std::size_t>(ToolButton::count)> tools_{};
};

/// A caption with its first "&" as the mark of a shortcut and all others as they are.
[[nodiscard]] QString menu_caption(const QString& caption);

}  // namespace veldra
