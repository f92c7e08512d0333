#pragma once

#include <QDialog>
#include <QMainWindow>
#include <QTimer>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "commands/file_watch.h"
#include "commands/startup.h"
#include "model/session.h"
#include "plot/application_printer.h"
#include "view/viewport.h"
#include "windows/forms/frmLogo.h"
#include "windows/frmTorvel_commands.h"
#include "windows/frmTorvel_gestures.h"
#include "windows/frmTorvel_help.h"
#include "windows/frmTorvel_status.h"
#include "windows/qt/picture_widget.h"
#include "windows/qt/qt_text_measurer.h"
#include "windows/qt/qt_user_interface.h"

namespace veldra {

class FrmNetzteile;

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

    /// The session of the desktop ends, or the system ends the program: what is open is given up,
    /// the running command too as far as it can be, and the window closes without a question as
    /// soon as the command is through. True if it has closed, so that nothing is left to be
    /// written; false amid a command, which does not serve events any more.
    bool end_by_system();

    /// The display is gone and the process ends: what dialogs hold is given up, then this writes
    /// what the end of the program writes, and touches no control. Amid a reading the tables are
    /// incomplete, and the files stay as they are.
    void end_without_display();

    /// What the program tells the system that has ended it: 0 if all has been written.
    [[nodiscard]] int exit_code() const { return exit_code_; }

    /// Draws the picture anew.
    void redraw();
    /// Brings title, menus, toolbar and labels into line with the session.
    void synchronise();

    [[nodiscard]] const ProgramRun& run() const { return run_; }
    [[nodiscard]] PictureWidget& picture() { return *picture_; }
    [[nodiscard]] TorvelHelp& help() { return *help_; }

    /// Where file dialogs begin: the folder of the file that was chosen or opened last.
    std::shared_ptr<QString> last_folder = std::make_shared<QString>();
    /// Asks the user for a graphic file; "" if there is none. Tests put an answer in its place.
    std::function<QString()> choose_file;
    /// Asks for the file that takes the state of one that cannot be written; "" if there is none.
    std::function<QString()> choose_other_file;
    /// Told of the failure that broke a command off; nothing runs any more after it. Without it the
    /// failure is thrown on, but the toolkit's functions in between lose what they hold.
    std::function<void(const std::exception&)> on_failure;
    /// Asks for the graphic file whose settings are taken over; "" if there is none.
    std::function<QString()> choose_settings_file;
    /// Asks for the file that the picture goes into; "" if there is none.
    std::function<QString()> choose_picture_file;
    /// Asks for the file that a plot goes into, given the name that stands to reason; "" if there
    /// is none.
    std::function<QString(const QString& proposed)> choose_plot_file;

 protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    void build_controls();
    [[nodiscard]] std::map<MenuItem, Command> menu_commands();
    [[nodiscard]] std::map<ToolButton, Command> tool_commands();
    // The hand over the picture: frmTorvel_view.cpp.
    void build_gestures();
    void add_view_commands(std::map<MenuItem, Command>& commands);
    void add_view_commands(std::map<ToolButton, Command>& commands);
    /// A command that changes the view, and the picture after it.
    [[nodiscard]] Command view_command(std::function<bool()> change);
    void undo();
    /// The folder that file dialogs of this run begin in.
    void take_first_folder();
    void save_picture(const std::string& path);
    /// A command that writes a file which the user names. What goes wrong is told under `title` and
    /// takes nothing of the user's work with it.
    [[nodiscard]] Command save_command(std::string title, std::function<QString()> choose,
                                       std::function<void(const std::string& path)> save);
    /// Runs what opens a file; given up on the way, no file is loaded.
    void opening(const Command& open);
    /// Runs what may be given up and then has changed nothing.
    void revocable(const Command& change);
    /// Draws the picture for a request that came while another drawing was under way.
    void make_up_redraw();
    /// Puts the texts on the edges of the sheets anew after the sheets have moved.
    void lay_out_sheets();
    [[nodiscard]] QString dropped_file(const QMimeData& dropped) const;
    void open_dropped();

    // Plot mode: frmTorvel_plot.cpp.
    void add_plot_commands(std::map<MenuItem, Command>& commands);
    void add_plot_commands(std::map<ToolButton, Command>& commands);
    /// The control lbl_legende covers the legend that the picture shows.
    void place_legend_control();

    // Selection, network parts, end: frmTorvel_dialogs.cpp.
    void add_dialog_commands(std::map<MenuItem, Command>& commands);
    void add_dialog_commands(std::map<ToolButton, Command>& commands);
    /// True unless a command runs; what the hand is doing over the picture then ends.
    [[nodiscard]] bool ready_for_dialog();
    void open_object_selection();
    /// Opens and closes the dialogs that stay open beside the window, as the session says.
    void synchronise_dialogs();
    void load_network_parts();
    void unload_network_parts();
    /// No command may begin.
    [[nodiscard]] bool is_locked() const { return busy_ || failed_ || end_wanted_; }
    /// A command may begin, and no dialog keeps the user from the window.
    [[nodiscard]] bool is_free() const;
    /// Asks about the open file if another program has rewritten it and is through with it.
    void notice_rewritten_file();
    void take_settings_over();
    void open_start_file();
    void open_project_file();
    /// The window is to be closed as soon as the running command is through, which is given up as
    /// far as it can be.
    void want_end();
    void close_when_free();
    void give_up_dialogs();
    void end_program();
    void unload_dialogs();

    [[nodiscard]] Desk desk();
    /// Runs one command to its end; those that come meanwhile are dropped.
    void perform(const Command& command);
    void run_to_its_end(const Command& command);
    /// A command broke off. Where the open file's folder has vanished, the user decides about the
    /// work on it and goes on without a file; otherwise the session is given up.
    void settle_failure(const std::exception& failure);
    [[nodiscard]] UnwrittenAnswer ask_unwritten(const std::string& text);
    /// A command broke off: its reason and where the user's work is go to `on_failure`.
    void give_up_session(const std::exception& failure);
    void open_file();
    void show_logo(FrmLogo::ShownBy shown_by);
    void open_display_options();
    /// `limit` is that of EV at the opening: another one hides and shows other test values, which
    /// are read anew.
    void take_display_options(double limit);
    // The dialogs of the plot: frmTorvel_plotdialogs.cpp.
    void add_plot_dialogs(std::map<MenuItem, Command>& commands);
    void open_plot_settings();
    void open_printer_dialog();
    /// After a dialog: draws the picture anew as long as a file is open.
    void redraw_open_file();
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
    FileWatch watch_;
    FrmNetzteile* frm_netzteile_ = nullptr;  ///< null while it is not open
    std::optional<QPoint> netzteile_place_;  ///< where it was last
    std::unique_ptr<TorvelCommands> commands_;
    TorvelGestures* gestures_ = nullptr;
    TorvelHelp* help_ = nullptr;
    TorvelStatus* status_ = nullptr;
    TorvelProgress* progress_ = nullptr;
    QTimer resize_timer_;
    QTimer redraw_timer_;  ///< tries a missed redraw again while a command runs
    WindowMode last_mode_ = WindowMode::normal;
    QTimer watch_timer_;  ///< looks at the open file, since not every file system tells of changes
    QTimer drop_timer_;
    QString dropped_path_;
    QTimer synchronise_timer_;
    QTimer end_timer_;         ///< tries the end that is wanted again while a command runs
    bool end_wanted_ = false;  ///< the window was closed while a command ran
    bool ended_by_system_ = false;
    int exit_code_ = 0;
    bool busy_ = false;    ///< a command runs
    bool failed_ = false;  ///< a command broke off: the session must not be used any more
};

}  // namespace veldra
