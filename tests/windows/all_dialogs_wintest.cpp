#include <QAccessible>
#include <QDirIterator>
#include <QFileDialog>
#include <QGroupBox>
#include <QMenuBar>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>
#include <QTextBrowser>
#include <QToolBar>
#include <algorithm>
#include <functional>
#include <vector>

#include "dialog_driver.h"
#include "dialog_keys.h"
#include "scripted_printer.h"
#include "torvel_fixture.h"
#include "unnamed_controls.h"
#include "windows/forms/frmHandbuch.h"
#include "windows/forms/frmStrichst.h"
#include "windows/qt/colour_dialog.h"
#include "windows/qt/font_dialog.h"

using namespace veldra;
using namespace veldra::test;
using veldra_test::control;

namespace {

class NoDialog final : public PrintDialog {
 public:
    std::int32_t ShowPrinter(std::int32_t flags) override { return flags; }
};

/// Tab comes to this: what can be seen and used, and takes the focus by it.
bool is_reached_by_tab(const QWidget& widget) {
    return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0 &&
           widget.focusProxy() == nullptr;
}

/// The part of it that its window shows.
QRect shown_part(const QWidget& widget) {
    return widget.visibleRegion().boundingRect();
}

bool is_whole_in_sight(const QWidget& widget) {
    return shown_part(widget) == widget.rect();
}

/// As much of it as the room for it allows: what is larger is seen in part.
bool is_in_sight(const QWidget& widget) {
    const QWidget* room = widget.parentWidget();
    while (room != nullptr && qobject_cast<const QScrollArea*>(room->parentWidget()) == nullptr) {
        room = room->parentWidget();
    }
    const QSize wanted = room == nullptr ? widget.size() : widget.size().boundedTo(room->size());
    const QSize shown = shown_part(widget).size();
    constexpr int border = 2;
    return shown.width() + border >= wanted.width() && shown.height() + border >= wanted.height();
}

}  // namespace

/// What all dialogs have in common, each as the main window opens it.
class AllDialogsTest : public TorvelFixture {
    Q_OBJECT

 private:
    struct Row {
        const char* name;
        const char* default_button;  ///< "" if Return presses none
        const char* page;            ///< of the handbook
        std::function<QDialog*()> open;
    };

    QDialog* by_menu(const char* name, const char* entry) {
        action(entry)->trigger();
        return window_->findChild<QDialog*>(text(name));
    }

    QDialog* plot_settings() {
        if (session_.plotmodus == 0) {
            action("m_plotten_ein")->trigger();
        }
        return by_menu("frmPlotten", "m_plotten_einstellungen");
    }

    QDialog* line_widths() {
        auto* picker = new FrmStrichst(window_.get(), width_, QString());
        picker->setAttribute(Qt::WA_DeleteOnClose);
        picker->show();
        return picker;
    }

    QDialog* font() {
        auto* dialog =
            new FontDialog(window_.get(), text("dlg_pubez_screen"), FontChoice(), {true, true});
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->open();
        return dialog;
    }

    QDialog* colour() {
        auto* dialog = new ColourDialog(window_.get(), text("dlg_farbe"), 0xFF8000);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->open();
        return dialog;
    }

    std::vector<Row> rows() {
        const auto entry = [this](const char* name, const char* item) {
            return [this, name, item] { return by_menu(name, item); };
        };
        return {{"frmLogo", "cmd_ok", "hauptfenster", entry("frmLogo", "m_hilfe_proginfo")},
                {"frmObjekte", "cmd_ok", "objekte", entry("frmObjekte", "m_torvel_objekte")},
                {"frmNetzteile", "cmd_anzeigen", "netzteile",
                 entry("frmNetzteile", "m_ansicht_netzteile")},
                {"frmMaßstab", "", "massstab", entry("frmMaßstab", "m_ansicht_maßstab")},
                {"frmDarstellungen", "cmd_ok", "darstellungen",
                 entry("frmDarstellungen", "m_optionen_darstellungen")},
                {"frmStrichst", "cmd_ok", "darstellungen", [this] { return line_widths(); }},
                {"frmLegende", "cmd_ok", "legende", entry("frmLegende", "m_optionen_legende")},
                {"frmVerwopt", "cmd_ok", "grenzen", entry("frmVerwopt", "m_optionen_grenzen")},
                {"frmPlotten", "cmd_ok", "plotten", [this] { return plot_settings(); }},
                {"frmDrucker", "cmd_ok", "drucker", entry("frmDrucker", "m_optionen_drucker")},
                {"dlg_pubez_screen", "cmd_ok", "", [this] { return font(); }},
                {"frmHandbuch", "", "", entry("frmHandbuch", "m_hilfe_handbuch")}};
    }

    /// Runs `check` on each dialog, on each of its tabs if it has any.
    void on_all_dialogs(const std::function<void(QDialog&, const Row&)>& check) {
        for (const Row& row : rows()) {
            QDialog* const dialog = row.open();
            QVERIFY2(dialog != nullptr && dialog->isVisible(), row.name);
            QCOMPARE(dialog->objectName(), text(row.name));
            dialog->activateWindow();
            QVERIFY2(QTest::qWaitForWindowActive(dialog), row.name);
            auto* const tabs = dialog->findChild<QTabWidget*>();
            for (int tab = 0; tab < (tabs == nullptr ? 1 : tabs->count()); ++tab) {
                if (tabs != nullptr) {
                    tabs->setCurrentIndex(tab);
                }
                check(*dialog, row);
                if (QTest::currentTestFailed()) {
                    qWarning("%s, tab %d", row.name, tab);
                    return;
                }
            }
            close_dialog(dialog);
        }
        action("m_plotten_aus")->trigger();  // the plot settings have switched it on
    }

    /// The dialog lies on the screen with its frame, its last buttons are in sight, and every other
    /// control comes into sight when Tab comes to it.
    void verify_reachable() {
        window_->move(window_->screen()->availableGeometry().topLeft());
        on_all_dialogs([](QDialog& dialog, const Row& row) {
            QTest::qWait(20);  // layouts come a moment after their window
            const QRect screen = dialog.screen()->availableGeometry();
            const QRect frame = dialog.frameGeometry();
            QVERIFY2(screen.contains(frame), row.name);
            int buttons = 0;
            for (const char* name : {"cmd_ok", "cmd_abbrechen", "cmd_anzeigen"}) {
                if (const auto* button = dialog.findChild<QPushButton*>(text(name))) {
                    QVERIFY2(is_whole_in_sight(*button), name);
                    ++buttons;
                }
            }
            QVERIFY2(buttons > 0 || *row.default_button == '\0', row.name);
            for (QWidget* one : dialog.findChildren<QWidget*>()) {
                if (is_reached_by_tab(*one) && !veldra_test::is_inner_part(*one)) {
                    one->setFocus(Qt::TabFocusReason);
                    QVERIFY2(is_in_sight(*one), qPrintable(one->objectName()));
                }
            }
        });
    }

    static void close_dialog(QDialog* dialog) {
        const QPointer<QDialog> open(dialog);
        dialog->close();
        QTRY_VERIFY(open.isNull() || !open->isVisible());
        QApplication::processEvents();  // the main window takes note of it
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// Room that the text of a label, button or frame needs.
    static QSize needed(const QWidget& shown) {
        const auto* button = qobject_cast<const QPushButton*>(&shown);
        const bool is_sign = button != nullptr && button->text().size() == 1;
        return is_sign ? button->fontMetrics().boundingRect(button->text()).size()
                       : shown.minimumSizeHint();
    }

    static QString shown_page(const QWidget& owner) {
        const auto* handbook = owner.findChild<FrmHandbuch*>(QString(), Qt::FindDirectChildrenOnly);
        return handbook == nullptr || !handbook->isVisible()
                   ? QString()
                   : handbook->findChild<QTextBrowser*>()->source().fileName().section(
                         QLatin1Char('.'), 0, 0);
    }

    ScriptedPrinter printer_;
    NoDialog print_dialog_;
    LineWidthChoice width_{2, 1, 0xFFFFFF};

 private Q_SLOTS:
    void init() {
        make_folders();
        write("ve_teile.dat",
              QByteArray("NETZTEIL A\r\n") + square_network + "NETZTEIL B\r\n" + square_network);
        printer_ = ScriptedPrinter();
        create().use_printer(printer_, print_dialog_);
        window_->load();
        logo()->accept();
        window_->choose_file = [this] { return path("ve_teile.dat"); };
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        QTest::qWait(150);  // its first size is followed before anything is opened
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        action("m_ansicht_netzteile")->trigger();  // came by itself
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void cleanup() { close_down(); }

    /// By the object names that the windows of the source tree give themselves.
    void no_dialog_is_missing() {
        static const QRegularExpression name(
            text("^    setObjectName\\(QStringLiteral\\(\"(frm[^\"]+)\"\\)\\);"),
            QRegularExpression::MultilineOption);
        QStringList known{text("frmTorvel")};
        for (const Row& row : rows()) {
            known << text(row.name);
        }
        known.removeOne(text("dlg_pubez_screen"));  // has its name from its caller
        QStringList found;
        QDirIterator files(text(SOURCE_DIR), {text("frm*.cpp")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const auto match = name.match(QString::fromUtf8(file.readAll()));
            if (match.hasMatch()) {
                found << match.captured(1);
            }
        }
        known.sort();
        found.sort();
        QCOMPARE(found, known);
    }

    void all_controls_have_names() {
        on_all_dialogs([](QDialog& dialog, const Row&) {
            QCOMPARE(veldra_test::unnamed_controls(dialog), QStringList());
        });
        for (const auto* bar : window_->findChildren<QToolBar*>()) {
            for (QAction* one : bar->actions()) {
                if (!one->isSeparator()) {
                    auto* button = bar->widgetForAction(one);
                    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(button);
                    QVERIFY2(!spoken->text(QAccessible::Name).isEmpty(),
                             qPrintable(one->objectName()));
                }
            }
        }
    }

    void no_shortcut_is_used_twice() {
        on_all_dialogs([](QDialog& dialog, const Row&) {
            QCOMPARE(veldra_test::shared_mnemonics(dialog), QStringList());
        });
    }

    void no_shortcut_is_used_twice_in_a_menu() {
        QList<QWidget*> menus{window_->menuBar()};
        for (auto* menu : window_->menuBar()->findChildren<QMenu*>()) {
            menus << menu;
        }
        QVERIFY(menus.size() > 4);
        for (const QWidget* menu : menus) {
            QStringList letters;
            for (const QAction* entry : menu->actions()) {
                const qsizetype mark = entry->text().indexOf(QLatin1Char('&'));
                if (entry->isVisible() && mark >= 0) {
                    letters << entry->text().mid(mark + 1, 1).toLower();
                }
            }
            QVERIFY(!letters.isEmpty());
            QVERIFY2(letters.removeDuplicates() == 0, qPrintable(menu->objectName()));
        }
    }

    void return_presses_ok_or_the_button_that_has_the_focus() {
        on_all_dialogs([](QDialog& dialog, const Row& row) {
            // A control that is no button leaves the choice to the dialog.
            dialog.setFocus();
            const QString expected = text(row.default_button);
            QCOMPARE(veldra_test::default_buttons(dialog).join(QLatin1Char(' ')), expected);
            if (expected.isEmpty()) {
                return;
            }
            for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
                if (button->isVisible() && button->isEnabled()) {
                    button->setFocus();
                    QCOMPARE(veldra_test::default_buttons(dialog),
                             QStringList{button->objectName()});
                }
            }
        });
    }

    void escape_closes() {
        for (const Row& row : rows()) {
            const QPointer<QDialog> dialog(row.open());
            QVERIFY2(dialog != nullptr, row.name);
            QTest::keyClick(dialog.data(), Qt::Key_Escape);
            QTRY_VERIFY2(dialog.isNull() || !dialog->isVisible(), row.name);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    /// Each control once, and none that cannot be used.
    void tab_reaches_every_control() {
        on_all_dialogs([](QDialog& dialog, const Row&) {
            QList<const QWidget*> wanted;
            for (const QWidget* one : dialog.findChildren<QWidget*>()) {
                if (is_reached_by_tab(*one) && !veldra_test::is_inner_part(*one)) {
                    wanted << one;
                }
            }
            if (wanted.isEmpty()) {
                return;
            }
            const_cast<QWidget*>(wanted.constFirst())->setFocus(Qt::TabFocusReason);
            QStringList reached = veldra_test::tab_chain(dialog);
            // On a page of the handbook it goes from link to link.
            reached.erase(std::unique(reached.begin(), reached.end()), reached.end());
            QCOMPARE(reached.removeDuplicates(), qsizetype{0});
            for (const QWidget* one : wanted) {
                // Coming to an option may have closed the way to the others of its group.
                if (is_reached_by_tab(*one)) {
                    QVERIFY2(reached.contains(one->objectName()), qPrintable(one->objectName()));
                }
            }
        });
    }

    void f1_opens_its_page() {
        on_all_dialogs([](QDialog& dialog, const Row& row) {
            if (*row.page == '\0') {
                return;
            }
            QWidget* const focus = dialog.focusWidget();
            QTest::keyClick(focus == nullptr ? &dialog : focus, Qt::Key_F1);
            // Tool windows leave the key to the main window.
            const QWidget& owner = shown_page(dialog).isEmpty() ? *dialog.parentWidget() : dialog;
            QCOMPARE(shown_page(owner), text(row.page));
        });
    }

    void f1_over_an_open_list_opens_the_page_of_the_dialog() {
        QDialog* const dialog = by_menu("frmDrucker", "m_optionen_drucker");
        auto& list = control<QComboBox>(*dialog, "cbo_papierformat");
        list.showPopup();
        QVERIFY(QTest::qWaitForWindowExposed(list.view()->window()));
        QTest::keyClick(list.view(), Qt::Key_F1);
        QCOMPARE(shown_page(*dialog), text("drucker"));
        QVERIFY(!list.view()->isVisible());
    }

    void f1_over_an_open_menu_opens_the_handbook() {
        auto* menu = window_->findChild<QMenu*>(text("m_torvel_plotten"));
        menu->popup(window_->mapToGlobal(QPoint(50, 50)));
        QVERIFY(QTest::qWaitForWindowExposed(menu));
        QTest::keyClick(menu, Qt::Key_F1);
        QCOMPARE(shown_page(*window_), text("index"));
        QVERIFY(!menu->isVisible());
    }

    void the_dialog_of_the_open_command_is_the_one_for_graphic_files() {
        start();
        logo()->accept();
        bool seen = false;
        veldra_test::when_shown<QFileDialog>([&seen](QFileDialog& files) {
            seen = true;
            QCOMPARE(files.objectName(), text("dlg_torvel_datei"));
            QCOMPARE(files.windowTitle(), text("Graphikdatei öffnen"));
            QCOMPARE(files.nameFilters(), QStringList({text("Graphikdateien (ve*.dat) (ve*.dat)"),
                                                       text("Alle Dateien (*.*) (*)")}));
            QCOMPARE(files.fileMode(), QFileDialog::ExistingFile);
            files.reject();
        });
        action("m_datei_beliebig")->trigger();
        QVERIFY(seen);
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
    }

    /// On a screen of any size.
    void ok_and_abbrechen_are_reachable() {
        verify_reachable();
        // What is within its area is the toolkit's.
        QDialog* const colours = colour();
        QVERIFY(QTest::qWaitForWindowActive(colours));
        QVERIFY(colours->screen()->availableGeometry().contains(colours->frameGeometry()));
        QVERIFY(is_whole_in_sight(veldra_test::control(*colours, "cmd_ok")));
        QVERIFY(is_whole_in_sight(veldra_test::control(*colours, "cmd_abbrechen")));
        close_dialog(colours);
    }

    /// The same where people have chosen larger letters instead of a larger scale.
    void ok_and_abbrechen_are_reachable_with_large_letters() {
        const QFont usual = QApplication::font();
        for (const double factor : {1.5, 2.0}) {
            QFont font = usual;
            font.setPointSizeF(usual.pointSizeF() * factor);
            QApplication::setFont(font);
            verify_reachable();
            QApplication::setFont(usual);
        }
    }

    /// No caption is cut off, with the usual letters and with those of a large screen.
    void sizes_follow_the_font() {
        const QFont usual = QApplication::font();
        for (const double factor : {1.0, 1.5}) {
            QFont font = usual;
            font.setPointSizeF(usual.pointSizeF() * factor);
            QApplication::setFont(font);
            on_all_dialogs([](QDialog& dialog, const Row&) {
                QTest::qWait(20);  // layouts come a moment after their window
                for (const QWidget* one : dialog.findChildren<QWidget*>()) {
                    const bool told = qobject_cast<const QAbstractButton*>(one) != nullptr ||
                                      qobject_cast<const QGroupBox*>(one) != nullptr ||
                                      qobject_cast<const QLabel*>(one) != nullptr;
                    const bool may_be_cut =
                        one->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
                    if (told && !may_be_cut && one->isVisible() &&
                        !veldra_test::is_inner_part(*one)) {
                        QVERIFY2(one->width() >= needed(*one).width(),
                                 qPrintable(one->objectName()));
                        QVERIFY2(one->height() >= needed(*one).height(),
                                 qPrintable(one->objectName()));
                    }
                }
            });
            QApplication::setFont(usual);
        }
    }
};

QTEST_MAIN(AllDialogsTest)
#include "all_dialogs_wintest.moc"
