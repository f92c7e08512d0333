#pragma once

#include <QDialog>
#include <QMainWindow>
#include <QTimer>
#include <exception>
#include <functional>
#include <memory>

#include "platform/qt/picture_widget.h"
#include "platform/qt/qt_text_measurer.h"
#include "platform/qt/qt_user_interface.h"
#include "plot/application_printer.h"
#include "shell/frmLogo.h"
#include "shell/frmTorvel_commands.h"
#include "shell/session.h"
#include "shell/startup.h"
#include "view/viewport.h"

namespace veldra {

/// The main window. It turns what the user does into calls of the modules, one at a time, and
/// brings its controls into line with the session after each.
class FrmTorvel final : public QMainWindow {
    Q_OBJECT

 public:
    /// `session` outlives the window. `befehlszeile` names a project profile or is empty.
    FrmTorvel(Session& session, const SystemFolders& folders, const std::string& befehlszeile,
              int logo_wait = FrmLogo::usual_wait);

    /// Printers and print dialog of the run, both of which outlive the window; without this call
    /// the system has none. To be called before `load`.
    void use_printer(Printer& printer, PrintDialog& dialog);

    /// Brings the application up, from the defaults to the open project or the logo.
    void load();

    /// Draws the picture anew.
    void redraw();
    /// Brings title, menus, toolbar and labels into line with the session.
    void synchronise();

    [[nodiscard]] const ProgramRun& run() const { return run_; }
    [[nodiscard]] PictureWidget& picture() { return *picture_; }

    /// Asks the user for a graphic file; "" if there is none. Tests put an answer in its place.
    std::function<QString()> choose_file;
    /// Told of the failure that broke a command off; nothing runs any more after it. Without it the
    /// failure is thrown on, but the toolkit's functions in between lose what they hold.
    std::function<void(const std::exception&)> on_failure;

 protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    void build_controls();
    [[nodiscard]] std::map<MenuItem, Command> menu_commands();
    [[nodiscard]] std::map<ToolButton, Command> tool_commands();
    [[nodiscard]] Desk desk();
    /// Runs one command to its end; those that come meanwhile are dropped.
    void perform(const Command& command);
    void open_file();
    void show_logo(FrmLogo::ShownBy shown_by);
    // Legend, boundaries and scale bars: frmTorvel_side_dialogs.cpp.
    enum class Redraw { always, if_accepted };
    void add_side_dialogs(std::map<MenuItem, Command>& commands);
    void add_side_dialogs(std::map<ToolButton, Command>& commands);
    void open_modal(const std::function<QDialog*()>& create, Redraw redraws);
    void synchronise_scale_bars();
    /// The window has another size or state: the picture follows as soon as both are known.
    void expect_size();
    void follow_size();
    void apply_size();
    [[nodiscard]] WindowMode mode() const;

    Session& session_;
    ProgramRun run_;
    int logo_wait_;
    QtTextMeasurer measurer_;
    PictureWidget* picture_;
    QtUserInterface ui_;
    Printer* printer_ = nullptr;
    PrintDialog* print_dialog_ = nullptr;
    std::unique_ptr<TorvelCommands> commands_;
    QTimer resize_timer_;
    WindowMode last_mode_ = WindowMode::normal;
    bool busy_ = false;    ///< a command runs
    bool failed_ = false;  ///< a command broke off: the session must not be used any more
};

}  // namespace veldra
