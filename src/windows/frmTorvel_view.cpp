// The part of the main window that looks after the view: zoom, undo, pictures as files, what the
// user drops on it.
#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <utility>

#include "os/files.h"
#include "plot/preview.h"
#include "plot/printer_adapters.h"
#include "text/fatal_error.h"
#include "view/label_moving.h"
#include "view/sheet_moving.h"
#include "view/zoom.h"
#include "windows/frmTorvel.h"
#include "windows/qt/picture_image.h"

namespace veldra {

void FrmTorvel::build_gestures() {
    status_ = new TorvelStatus(this);
    setStatusBar(status_);
    progress_ = new TorvelProgress(*status_);
    progress_->before_events = [this] {
        if (session_.datei_geladen != 1 && !picture_->is_drawing()) {
            picture_->clear();  // the file before has been left
        }
        picture_->show_unfinished();
    };
    connect(picture_, &PictureWidget::redraw_missed, this, &FrmTorvel::make_up_redraw);
    connect(picture_, &PictureWidget::redraw_wanted, this, &FrmTorvel::redraw_open_file);
    redraw_timer_.setSingleShot(true);
    connect(&redraw_timer_, &QTimer::timeout, this, &FrmTorvel::make_up_redraw);
    GestureHost host;
    host.idle = [this] {
        return !is_locked() && session_.datei_geladen == 1 && !picture_->shown().isNull();
    };
    host.perform = [this](const Command& command) { perform(command); };
    host.redraw = [this] { redraw(); };
    host.lay_out_sheets = [this] { lay_out_sheets(); };
    host.show_place = [this](const std::optional<WorldPoint>& place) {
        status_->show_place(place);
    };
    gestures_ = new TorvelGestures(session_, *picture_,
                                   *findChild<QLabel*>(QStringLiteral("lbl_punubinf")), host);
    auto* full_screen = new QAction(this);
    full_screen->setObjectName(QStringLiteral("vollbild"));
    full_screen->setShortcut(Qt::Key_F11);
    connect(full_screen, &QAction::triggered, this,
            [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); });
    addAction(full_screen);
    setAcceptDrops(true);
    choose_picture_file = [this] {
        return ask_for_new_file(
            this,
            {QStringLiteral("dlg_torvel_speichern"), QStringLiteral("Bild speichern unter"),
             "PNG-Bild (*.png)|*.png|SVG-Bild (*.svg)|*.svg"},
            proposed_name(session_.graphikdatei, QStringLiteral("png")), *last_folder);
    };
    choose_other_file = [this] {
        return ask_for_new_file(
            this,
            {QStringLiteral("dlg_torvel_speichern"), QStringLiteral("Graphikdatei speichern unter"),
             "Graphikdateien (ve*.dat)|ve*.dat|Alle Dateien (*.*)|*.*"},
            QFileInfo(path_text(session_.graphikdatei)).fileName(), *last_folder);
    };
    choose_plot_file = [this](const QString& proposed) {
        return ask_for_new_file(
            this,
            {QStringLiteral("dlg_torvel_speichern"), QStringLiteral("Plot als PDF speichern"),
             "PDF-Datei (*.pdf)|*.pdf"},
            proposed, *last_folder);
    };
}

Command FrmTorvel::view_command(std::function<bool()> change) {
    return [this, change = std::move(change)] {
        perform([&] {
            if (change()) {
                redraw();
            }
        });
    };
}

void FrmTorvel::add_view_commands(std::map<MenuItem, Command>& commands) {
    commands[MenuItem::m_ansicht_undo] = [this] { undo(); };
    commands[MenuItem::m_ansicht_original] = view_command([this] {
        show_whole(session_);
        return true;
    });
    commands[MenuItem::m_ansicht_halb] = view_command([this] {
        zoom_out(session_);
        return true;
    });
    commands[MenuItem::m_plotten_null] = [this] {
        perform([this] {
            PaperTextOnDesk paper_text(session_, measurer_, printer_);
            fit_plot_origin(session_, paper_text);
            lay_out_sheets();
        });
    };
    commands[MenuItem::m_datei_bild] = save_command(
        "VELDRA - Bild speichern", [this] { return choose_picture_file(); },
        [this](const std::string& path) { save_picture(path); });
}

void FrmTorvel::add_view_commands(std::map<ToolButton, Command>& commands) {
    commands[ToolButton::rueckgaengig] = [this] { undo(); };
    commands[ToolButton::lupe_plus] = view_command([this] { return zoom_in(session_); });
    commands[ToolButton::lupe_minus] = view_command([this] {
        zoom_out(session_);
        return true;
    });
    const std::pair<ToolButton, ShiftTo> shifts[] = {{ToolButton::schiebe_rechts, ShiftTo::rechts},
                                                     {ToolButton::schiebe_links, ShiftTo::links},
                                                     {ToolButton::schiebe_hoch, ShiftTo::hoch},
                                                     {ToolButton::schiebe_runter, ShiftTo::runter}};
    for (const auto& [button, direction] : shifts) {
        commands[button] = view_command([this, direction = direction] {
            shift_view(session_, direction);
            return true;
        });
    }
    commands[ToolButton::schiebe_original] = view_command([this] {
        show_whole(session_);
        return true;
    });
}

void FrmTorvel::make_up_redraw() {
    constexpr int retry_after = 20;  // milliseconds
    if (busy_) {
        redraw_timer_.start(retry_after);
        return;
    }
    redraw_open_file();
}

void FrmTorvel::revocable(const Command& change) {
    const TorvelProgress::MayCancel may_cancel(*progress_);
    try {
        change();
    } catch (const WorkCancelled&) {
        // What was shown before is still shown.
    }
}

void FrmTorvel::take_first_folder() {
    for (const std::string& recent : session_.zuletzt_datei) {
        const QString folder = QFileInfo(path_text(recent)).path();
        if (!recent.empty() && QFileInfo(folder).isDir()) {
            *last_folder = folder;
            return;
        }
    }
    *last_folder = path_text(run_.folders.documents);
}

void FrmTorvel::opening(const Command& open) {
    const std::string before = session_.graphikdatei;
    const TorvelProgress::MayCancel may_cancel(*progress_);
    progress_->begin();
    try {
        open();
    } catch (const WorkCancelled&) {
        forget_file(session_);
        watch_.leave();
    }
    if (session_.graphikdatei != before && session_.datei_geladen == 1) {
        *last_folder = QFileInfo(path_text(session_.graphikdatei)).path();
    }
}

void FrmTorvel::undo() {
    perform([this] {
        switch (session_.window.undo.undo_art) {
            case undo_kind::point_label:
            case undo_kind::district_label:
                undo_label_move(session_);
                picture_->repaint_labels();
                break;
            case undo_kind::sheets:
                undo_sheet_move(session_);
                lay_out_sheets();
                break;
            case undo_kind::zoom_in:
            case undo_kind::zoom_out:
                undo_zoom(session_);
                redraw();
                break;
            default:
                break;
        }
    });
}

void FrmTorvel::lay_out_sheets() {
    if (legend_cuts_layers(session_)) {
        redraw();
        return;
    }
    place_sheet_texts(session_, desk());
    picture_->repaint_labels();
}

Command FrmTorvel::save_command(std::string title, std::function<QString()> choose,
                                std::function<void(const std::string& path)> save) {
    return [this, title = std::move(title), choose = std::move(choose), save = std::move(save)] {
        perform([&] {
            const std::string path = system_path(choose());
            if (path.empty()) {
                return;
            }
            try {
                if (same_file(path, session_.graphikdatei) ||
                    same_file(path, working_path(session_))) {
                    throw FatalError(path + ": ist die geöffnete Graphikdatei");
                }
                save(path);
            } catch (const FatalError& failure) {
                ui_.message_box(MessageStyle::critical, title, failure.what());
            }
        });
    };
}

void FrmTorvel::save_picture(const std::string& path) {
    const bool vectors = path_text(path).endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive);
    write_picture_file(path, vectors ? svg_bytes(session_, measurer_, ui_, picture_->size())
                                     : png_bytes(picture_->shown()));
}

QString FrmTorvel::dropped_file(const QMimeData& dropped) const {
    // The toolkit takes drops for a window beneath a dialog as well.
    if (run_.is_project() || !is_free() || dropped.urls().size() != 1) {
        return {};
    }
    const QString path = dropped.urls().constFirst().toLocalFile();
    return QFileInfo(path).isFile() ? path : QString();
}

void FrmTorvel::dragEnterEvent(QDragEnterEvent* event) {
    if (!dropped_file(*event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void FrmTorvel::dropEvent(QDropEvent* event) {
    const QString path = dropped_file(*event->mimeData());
    if (path.isEmpty()) {
        return;
    }
    event->acceptProposedAction();
    // The program that the file comes from waits until the drop is over.
    dropped_path_ = path;
    drop_timer_.start(0);
}

void FrmTorvel::open_dropped() {
    perform([this] {
        opening([this] {
            datei_neu_laden(session_, system_path(dropped_path_), OpenedBy::name, desk());
        });
    });
}

}  // namespace veldra
