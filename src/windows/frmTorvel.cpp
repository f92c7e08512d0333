#include "windows/frmTorvel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEvent>
#include <QIcon>
#include <QLabel>
#include <QScreen>
#include <QScrollBar>
#include <algorithm>

#include "commands/file_commands.h"
#include "commands/write_back.h"
#include "settings/paths.h"
#include "settings/profile.h"
#include "text/fatal_error.h"
#include "text/length_units.h"
#include "windows/qt/picture_image.h"

/// Makes the icons known: they stand in a static library, whose start-up code would be left out.
/// The macro works in the global namespace only.
static void load_icons() {
    Q_INIT_RESOURCE(veldra_icons);
}

namespace veldra {

namespace {

constexpr QSize usual_size(1120, 760);
/// The filter of dialogs for graphic files.
constexpr std::string_view graphic_files =
    "Graphikdateien (ve*.dat)|ve*.dat|Alle Dateien (*.*)|*.*";
/// A new size and a new state of the window (maximised, restored) come as two events in either
/// order. Both have come this many milliseconds after the first.
constexpr int size_delay = 60;
/// How often the open file is looked at, in milliseconds. A file that has not changed from one look
/// to the next is no longer being written.
constexpr int watch_interval = 700;

/// Marks a command as running and has it followed as long as this lives.
class Running {
 public:
    Running(bool& flag, Session& session, TorvelProgress& progress)
        : flag_(flag), session_(session), progress_(progress) {
        flag_ = true;
        session_.work = &progress_;
        progress_.begin();
    }
    ~Running() {
        progress_.end();
        session_.work = nullptr;
        flag_ = false;
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

 private:
    bool& flag_;
    Session& session_;
    TorvelProgress& progress_;
};

}  // namespace

FrmTorvel::FrmTorvel(Session& session, const SystemFolders& folders,
                     const std::string& befehlszeile, int logo_wait)
    : session_(session),
      logo_wait_(logo_wait),
      picture_(new PictureWidget(session, measurer_, this)),
      ui_(this, picture_) {
    load_icons();
    run_.folders = folders;
    run_.befehlszeile = befehlszeile;
    setObjectName(QStringLiteral("frmTorvel"));
    setWindowIcon(QIcon(QStringLiteral(":/veldra/icons/programm.svg")));
    setContextMenuPolicy(Qt::PreventContextMenu);
    build_controls();
    choose_file = [this] {
        return ask_for_existing_file(this,
                                     {QStringLiteral("dlg_torvel_datei"),
                                      QStringLiteral("Graphikdatei öffnen"), graphic_files},
                                     *last_folder);
    };
    choose_settings_file = [this] {
        return ask_for_existing_file(
            this,
            {QStringLiteral("dlg_torvel_uebernehmen"),
             QStringLiteral("Einstellungen übernehmen aus"), graphic_files},
            *last_folder);
    };
    ui_.before_message = [this] {
        picture_->show_unfinished();
        synchronise();
    };
    ui_.after_message = [this] { progress_->wait_anew(); };
}

void FrmTorvel::build_controls() {
    commands_ = std::make_unique<TorvelCommands>(*this, menu_commands(), tool_commands());
    setCentralWidget(picture_);
    picture_->setFocus();
    const auto hidden_bar = [this](Qt::Orientation orientation, const QString& name) {
        auto* bar = new QScrollBar(orientation, this);
        bar->setObjectName(name);
        bar->hide();
    };
    hidden_bar(Qt::Horizontal, QStringLiteral("hsb_torvel"));
    hidden_bar(Qt::Vertical, QStringLiteral("vsb_torvel"));
    for (const QString& name : {QStringLiteral("lbl_legende"), QStringLiteral("lbl_punubinf")}) {
        auto* label = new QLabel(picture_);
        label->setObjectName(name);
        label->hide();
    }
    build_gestures();
    help_ = new TorvelHelp(*this, session_);
    resize_timer_.setSingleShot(true);
    resize_timer_.setInterval(size_delay);
    connect(&resize_timer_, &QTimer::timeout, this, &FrmTorvel::follow_size);
    connect(&watch_timer_, &QTimer::timeout, this, &FrmTorvel::notice_rewritten_file);
    watch_timer_.start(watch_interval);
    drop_timer_.setSingleShot(true);
    connect(&drop_timer_, &QTimer::timeout, this, &FrmTorvel::open_dropped);
    synchronise_timer_.setSingleShot(true);
    connect(&synchronise_timer_, &QTimer::timeout, this, &FrmTorvel::synchronise);
    end_timer_.setSingleShot(true);
    connect(&end_timer_, &QTimer::timeout, this, &FrmTorvel::close_when_free);
    connect(picture_, &PictureWidget::resized, this, &FrmTorvel::expect_size);
    connect(picture_, &PictureWidget::resolution_changed, this, [this] {
        if (session_.datei_geladen == 1) {
            perform([this] { redraw(); });
        }
    });
    const QSize room = screen()->availableSize();
    resize(usual_size.boundedTo(room - QSize(40, 80)));
}

std::map<MenuItem, Command> FrmTorvel::menu_commands() {
    std::map<MenuItem, Command> commands;
    commands[MenuItem::m_datei_beliebig] = [this] { open_file(); };
    constexpr MenuItem recent[] = {MenuItem::m_datei_alt_1, MenuItem::m_datei_alt_2,
                                   MenuItem::m_datei_alt_3, MenuItem::m_datei_alt_4};
    for (int index = 1; const MenuItem item : recent) {
        commands[item] = [this, index] {
            perform([this, index] {
                opening([this, index] { datei_alt_oeffnen(session_, index, desk()); });
            });
        };
        ++index;
    }
    commands[MenuItem::m_datei_beenden] = [this] { close(); };
    commands[MenuItem::m_optionen_darstellungen] = [this] { open_display_options(); };
    commands[MenuItem::m_hilfe_handbuch] = [this] { help_->show_handbook(); };
    commands[MenuItem::m_hilfe_neues] = [this] { help_->show_news(run_.folders); };
    commands[MenuItem::m_hilfe_proginfo] = [this] { show_logo(FrmLogo::ShownBy::help); };
    add_view_commands(commands);
    add_plot_commands(commands);
    add_dialog_commands(commands);
    add_plot_dialogs(commands);
    add_side_dialogs(commands);
    return commands;
}

std::map<ToolButton, Command> FrmTorvel::tool_commands() {
    std::map<ToolButton, Command> commands{{ToolButton::datei_oeffnen, [this] { open_file(); }},
                                           {ToolButton::beenden, [this] { close(); }}};
    add_view_commands(commands);
    add_plot_commands(commands);
    add_dialog_commands(commands);
    add_side_dialogs(commands);
    return commands;
}

Desk FrmTorvel::desk() {
    return {measurer_,
            ui_,
            [this] { redraw(); },
            printer_,
            print_dialog_,
            &watch_,
            user_folder(run_.folders),
            [this](const std::string& text) { return ask_unwritten(text); }};
}

void FrmTorvel::use_printer(Printer& printer, PrintDialog& dialog) {
    printer_ = &printer;
    print_dialog_ = &dialog;
}

void FrmTorvel::load() {
    perform([this] {
        befehlszeile_deuten(run_);
        start_vorbereiten(session_, run_);
        take_printer(session_, printer_);
        startprofil_lesen(session_, run_);
        take_first_folder();
        if (!run_.icon_datei.empty()) {
            setWindowIcon(QIcon(path_text(run_.icon_datei)));
        }
        synchronise();
        show();
        // What is asked from now on stands over the window.
        wait_until_shown(*this, [this] { return !end_wanted_; });
        apply_size();
        profil_lesen(session_, run_.ini_datei);
        if (run_.is_project()) {
            unbekannte_angabe_melden(run_, ui_);
            open_project_file();
        } else if (!run_.start_datei.empty()) {
            open_start_file();
        }
    });
    if (!run_.is_project() && !is_locked()) {
        show_logo(FrmLogo::ShownBy::start);
    }
}

void FrmTorvel::perform(const Command& command) {
    if (!is_locked()) {
        run_to_its_end(command);
    }
}

void FrmTorvel::run_to_its_end(const Command& command) {
    gestures_->cancel();
    try {
        const Running running(busy_, session_, *progress_);
        command();
    } catch (const std::exception& failure) {
        settle_failure(failure);
    }
    if (failed_) {
        return;
    }
    if (session_.datei_geladen != 1) {
        picture_->clear();
    }
    synchronise();
}

void FrmTorvel::settle_failure(const std::exception& failure) {
    if (ended_by_system_ || !file_out_of_reach(session_)) {
        give_up_session(failure);
        return;
    }
    try {
        const Running running(busy_, session_, *progress_);
        settle_unwritten(session_, desk(), failure.what());
    } catch (const std::exception& end) {
        give_up_session(end);
        return;
    }
    forget_file(session_);
    watch_.leave();
}

void FrmTorvel::give_up_session(const std::exception& failure) {
    failed_ = true;
    const FatalError told = abandon_file(session_, desk(), failure.what(), WorkingCopy::outdated);
    if (!on_failure) {
        throw told;
    }
    on_failure(told);
}

void FrmTorvel::redraw() {
    // A long drawing lets events in, but no command.
    std::optional<Running> running;
    if (!busy_) {
        running.emplace(busy_, session_, *progress_);
    }
    const TorvelProgress::MayCancel may_cancel(*progress_);
    picture_->redraw(session_, ui_, printer_);
}

void FrmTorvel::synchronise() {
    synchronise_scale_bars();
    setWindowTitle(QString::fromStdString(session_.window.caption));
    WindowState& window = session_.window;
    window[MenuItem::m_datei_bild].enabled = session_.datei_geladen == 1;
    window[MenuItem::m_datei_uebernehmen].enabled = session_.datei_geladen == 1;
    window[MenuItem::m_datei_plot].enabled =
        window[MenuItem::m_torvel_plotten].enabled && window[MenuItem::m_plotten_aktuell].enabled;
    status_->synchronise(session_, watch_.read_only().is_read_only());
    gestures_->synchronise();
    commands_->synchronise(session_.window);
    place_legend_control();
    synchronise_dialogs();
}

void FrmTorvel::open_file() {
    perform([this] {
        const QString path = choose_file();
        if (!path.isEmpty()) {
            opening([this, &path] {
                datei_neu_laden(session_, system_path(path), OpenedBy::open_command, desk());
            });
        }
    });
}

void FrmTorvel::show_logo(FrmLogo::ShownBy shown_by) {
    auto* logo =
        new FrmLogo(this, session_.bestaetigung, shown_by, version_text(run_.folders), logo_wait_);
    logo->setAttribute(Qt::WA_DeleteOnClose);
    logo->open();
}

WindowMode FrmTorvel::mode() const {
    if (isMinimized()) {
        return WindowMode::minimised;
    }
    return isMaximized() || isFullScreen() ? WindowMode::maximised : WindowMode::normal;
}

void FrmTorvel::expect_size() {
    if (!resize_timer_.isActive()) {
        resize_timer_.start();
    }
}

void FrmTorvel::follow_size() {
    if (busy_) {
        resize_timer_.start();
        return;
    }
    perform([this] { apply_size(); });
}

void FrmTorvel::apply_size() {
    const PictureSize size{picture_->width() * twips_per_pixel,
                           picture_->height() * twips_per_pixel};
    const ResizeResult result = resize_picture(session_, last_mode_, mode(), size);
    last_mode_ = mode();
    if (result.redraw) {
        redraw();
    }
}

void FrmTorvel::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        expect_size();
    }
}

void FrmTorvel::closeEvent(QCloseEvent* event) {
    if (busy_ && !failed_) {
        event->ignore();
        want_end();
        return;
    }
    if (run_.programm_aktiv && !failed_) {
        end_program();
    }
    end_timer_.stop();
    event->accept();
    unload_dialogs();
}

}  // namespace veldra
