// The part of the main window that looks after the selection of objects, the network parts, the
// file as others see it, and the end of the program.
#include <QApplication>
#include <QScreen>
#include <algorithm>
#include <cstdlib>

#include "commands/file_commands.h"
#include "dialogs/network_parts.h"
#include "model/undo.h"
#include "settings/paths.h"
#include "text/fatal_error.h"
#include "text/shown_text.h"
#include "windows/forms/frmNetzteile.h"
#include "windows/forms/frmObjekte.h"
#include "windows/frmTorvel.h"
#include "windows/qt/dialog_place.h"
#include "windows/qt/session_editor.h"

namespace veldra {

void FrmTorvel::add_dialog_commands(std::map<MenuItem, Command>& commands) {
    commands[MenuItem::m_datei_uebernehmen] = [this] { take_settings_over(); };
    commands[MenuItem::m_torvel_objekte] = [this] { open_object_selection(); };
    commands[MenuItem::m_ansicht_netzteile] = [this] {
        perform(
            [this] { show_network_parts(session_.window, !session_.window.frm_netzteile_shown); });
    };
}

void FrmTorvel::add_dialog_commands(std::map<ToolButton, Command>& commands) {
    commands[ToolButton::netzteile] = [this] {
        perform([this] { show_network_parts(session_.window, true); });
    };
}

bool FrmTorvel::ready_for_dialog() {
    if (is_locked()) {
        return false;
    }
    gestures_->cancel();
    return true;
}

void FrmTorvel::open_object_selection() {
    if (!ready_for_dialog()) {
        return;
    }
    clear_undo_for_selection(session_.window);
    const auto take = [this, before = session_.obj](SelectionLeft left) {
        perform([&] { revocable([&] { auswahl_uebernehmen(session_, before, left, desk()); }); });
    };
    auto* dialog = new FrmObjekte(this, session_, take);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    synchronise();
    dialog->open();
}

void FrmTorvel::synchronise_dialogs() {
    if (session_.window.frm_netzteile_shown && frm_netzteile_ == nullptr) {
        load_network_parts();
    } else if (!session_.window.frm_netzteile_shown && frm_netzteile_ != nullptr) {
        unload_network_parts();
    }
    if (frm_netzteile_ != nullptr) {
        frm_netzteile_->synchronise();
    }
}

void FrmTorvel::load_network_parts() {
    FrmNetzteile::Requests requests;
    requests.show_part = [this](std::int32_t part) {
        perform([this, part] {
            revocable([this, part] { netzteil_anzeigen(session_, part, desk()); });
        });
    };
    requests.mark = [this](std::int32_t part, bool marked) {
        perform([this, part, marked] { mark_for_plotting(session_, part, marked); });
    };
    requests.close = [this] {
        progress_->give_up();  // Escape does not reach the main window from here
        perform([this] { show_network_parts(session_.window, false); });
    };
    frm_netzteile_ = new FrmNetzteile(this, session_, std::move(requests));
    frm_netzteile_->adjustSize();
    if (!netzteile_place_) {
        const QRect whole = screen()->geometry();
        const int left = whole.width() * 19 / 20 - frm_netzteile_->width();
        netzteile_place_ = whole.topLeft() + QPoint(std::max(0, left), whole.height() / 20);
    }
    frm_netzteile_->move(*netzteile_place_);
    frm_netzteile_->show();
    // Larger letters or another screen may not have the room there any more.
    keep_on_screen(*frm_netzteile_, *screen());
}

void FrmTorvel::unload_network_parts() {
    netzteile_place_ = frm_netzteile_->pos();
    frm_netzteile_->hide();
    frm_netzteile_->deleteLater();  // it may be the one that asks
    frm_netzteile_ = nullptr;
}

bool FrmTorvel::is_free() const {
    return !is_locked() && QApplication::activeModalWidget() == nullptr;
}

void FrmTorvel::notice_rewritten_file() {
    if (is_free() && session_.datei_geladen == 1 && watch_.rewritten_and_at_rest()) {
        perform([this] {
            opening([this] { geaenderte_datei_pruefen(session_, desk()); });
            if (ended_by_system_) {
                watch_.withdraw_acceptance();  // the question was not answered, but taken away
            }
        });
    }
}

void FrmTorvel::take_settings_over() {
    perform([this] {
        const QString path = choose_settings_file();
        if (!path.isEmpty()) {
            einstellungen_uebernehmen(session_, system_path(path), desk());
        }
    });
}

void FrmTorvel::open_start_file() {
    opening([this] { datei_neu_laden(session_, run_.start_datei, OpenedBy::name, desk()); });
}

void FrmTorvel::open_project_file() {
    // The window bears the project's title, also when its file is not opened.
    const std::string title = session_.window.fenstertitel;
    opening([this] { projektdatei_oeffnen(session_, desk()); });
    if (session_.datei_geladen != 1) {
        session_.window.fenstertitel = title;
        session_.window.caption = title;
    }
}

void FrmTorvel::end_program() {
    run_to_its_end([this] {
        try {
            programm_ende(session_, run_, desk(),
                          ended_by_system_ ? Attendance::nobody : Attendance::user);
        } catch (const FatalError& failure) {
            if (!ended_by_system_) {
                throw;
            }
            // Nobody may be there to close a box, and the system does not wait.
            tell_on_terminal(failure.what());
            exit_code_ = EXIT_FAILURE;
        }
    });
}

void FrmTorvel::unload_dialogs() {
    if (frm_netzteile_ != nullptr) {
        unload_network_parts();
    }
    QList<QDialog*> dialogs = findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly);
    std::reverse(dialogs.begin(), dialogs.end());
    for (QDialog* dialog : dialogs) {
        dialog->disconnect(this);
        dialog->hide();
        dialog->deleteLater();
    }
}

void FrmTorvel::want_end() {
    end_wanted_ = true;
    progress_->give_up_command();
    status_->showMessage(QStringLiteral("Das Programm wird beendet ..."));
    end_timer_.start(0);
}

void FrmTorvel::close_when_free() {
    constexpr int retry_after = 20;  // milliseconds
    // Giving up a dialog may bring up a message, which the next round then gives up.
    end_timer_.start(retry_after);
    if (ended_by_system_) {
        give_up_dialogs();
    }
    if (!busy_ || failed_) {
        close();
    }
}

/// What is open is closed as its user would do it, by giving up.
void FrmTorvel::give_up_dialogs() {
    constexpr int most_dialogs = 10;
    for (int i = 0; i < most_dialogs; ++i) {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            break;
        }
        dialog->reject();
    }
}

bool FrmTorvel::end_by_system() {
    ended_by_system_ = true;
    ui_.unattended = true;
    progress_->serve_no_more();
    want_end();
    close_when_free();
    return !busy_ || failed_;
}

void FrmTorvel::end_without_display() {
    const bool whole = !busy_ || progress_->step() == LongWork::Step::drawing;
    if (!run_.programm_aktiv || failed_ || !whole) {
        return;
    }
    session_.work = nullptr;
    for (QDialog* dialog : findChildren<QDialog*>()) {
        if (auto* editor = dynamic_cast<SessionEditor*>(dialog)) {
            editor->give_up_edits();
        }
    }
    QtUserInterface nobody(nullptr, nullptr);
    nobody.unattended = true;
    const Desk blind{
        measurer_, nobody, [] {}, nullptr, nullptr, &watch_, user_folder(run_.folders)};
    try {
        programm_ende(session_, run_, blind, Attendance::nobody);
    } catch (const std::exception& failure) {
        tell_on_terminal(failure.what());
    }
}

}  // namespace veldra
