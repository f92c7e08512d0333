#include <QCheckBox>
#include <QDirIterator>
#include <QLabel>
#include <QRegularExpression>
#include <QTextBrowser>

#include "torvel_fixture.h"
#include "windows/forms/frmHandbuch.h"
#include "windows/frmTorvel_help.h"

using namespace veldra;
using namespace veldra::test;

/// The Help menu and F1.
class FrmTorvelHelpTest : public TorvelFixture {
    Q_OBJECT

 private:
    static FrmHandbuch* handbook_of(const QWidget& owner) {
        return owner.findChild<FrmHandbuch*>(QString(), Qt::FindDirectChildrenOnly);
    }

    /// The page that the handbook of a window shows; "" if it is not to be seen.
    static QString shown_page(const QWidget& owner) {
        const FrmHandbuch* handbook = handbook_of(owner);
        if (handbook == nullptr || !handbook->isVisible()) {
            return {};
        }
        return handbook->findChild<QTextBrowser*>()->source().fileName().section(QLatin1Char('.'),
                                                                                 0, 0);
    }

    QString opened_;
    bool viewer_ = true;

    void catch_documents() {
        opened_.clear();
        viewer_ = true;
        window_->help().open_document = [this](const QString& document) {
            opened_ = document;
            return viewer_;
        };
    }

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void the_handbook_stands_first_in_the_help_menu() {
        start();
        const auto* menu = window_->findChild<QMenu*>(text("m_torvel_hilfe"));
        QCOMPARE(menu->actions().constFirst(), action("m_hilfe_handbuch"));
        QCOMPARE(action("m_hilfe_handbuch")->text(), text("&Handbuch"));
        QVERIFY(action("m_hilfe_handbuch")->isEnabled());
    }

    void the_menu_opens_the_handbook_at_its_first_page() {
        start();
        logo()->accept();
        action("m_hilfe_handbuch")->trigger();
        QCOMPARE(shown_page(*window_), text("index"));
        QVERIFY(!handbook_of(*window_)->isModal());
    }

    void f1_opens_the_handbook() {
        start();
        logo()->accept();
        QTest::keyClick(window_.get(), Qt::Key_F1);
        QCOMPARE(shown_page(*window_), text("index"));
    }

    void the_handbook_opens_once() {
        start();
        logo()->accept();
        action("m_hilfe_handbuch")->trigger();
        FrmHandbuch* first = handbook_of(*window_);
        first->close();
        action("m_hilfe_neues")->trigger();
        QCOMPARE(handbook_of(*window_), first);
        QCOMPARE(shown_page(*window_), text("neues"));
        QCOMPARE(window_->findChildren<FrmHandbuch*>().size(), 1);
    }

    void plot_mode_opens_the_page_about_plotting() {
        start_with_network();
        action("m_plotten_ein")->trigger();
        QCOMPARE(session_.plotmodus, std::int16_t{1});
        QTest::keyClick(window_.get(), Qt::Key_F1);
        QCOMPARE(shown_page(*window_), text("plotten"));
    }

    void f1_in_a_dialog_opens_the_page_about_it() {
        start_with_network();
        action("m_optionen_darstellungen")->trigger();
        auto* dialog = window_->findChild<QDialog*>(text("frmDarstellungen"));
        QVERIFY(dialog != nullptr);
        QTest::keyClick(dialog->findChild<QWidget*>(text("cmd_ok")), Qt::Key_F1);
        QCOMPARE(shown_page(*dialog), text("darstellungen"));
        // The handbook can be used although the dialog is modal, and goes with it.
        QVERIFY(handbook_of(*window_) == nullptr);
        QVERIFY(dialog->isVisible());
        dialog->reject();
        QTRY_VERIFY(window_->findChild<FrmHandbuch*>() == nullptr);
    }

    void f1_in_the_list_of_parts_opens_the_page_about_it() {
        write("ve_teile.dat", QByteArray("NETZTEIL A\r\n") + square_network);
        start();
        logo()->accept();
        window_->choose_file = [this] { return path("ve_teile.dat"); };
        action("m_datei_beliebig")->trigger();
        auto* parts = window_->findChild<QDialog*>(text("frmNetzteile"));
        QVERIFY(parts != nullptr);
        parts->activateWindow();
        QTRY_VERIFY(parts->isActiveWindow());
        QTest::keyClick(parts->findChild<QWidget*>(text("lst_netzteile")), Qt::Key_F1);
        QCOMPARE(shown_page(*window_), text("netzteile"));
    }

    void f1_in_a_message_over_a_dialog_opens_the_page_about_the_dialog() {
        start_with_network();
        action("m_optionen_darstellungen")->trigger();
        auto* dialog = window_->findChild<QDialog*>(text("frmDarstellungen"));
        QMessageBox message(dialog);
        message.open();
        QTest::keyClick(&message, Qt::Key_F1);
        QCOMPARE(shown_page(message), text("darstellungen"));
    }

    void f1_with_another_key_and_f1_in_the_handbook_open_nothing() {
        start();
        logo()->accept();
        QTest::keyClick(window_.get(), Qt::Key_F1, Qt::ShiftModifier);
        QVERIFY(handbook_of(*window_) == nullptr);
        action("m_hilfe_handbuch")->trigger();
        QTest::keyClick(handbook_of(*window_)->findChild<QTextBrowser*>(), Qt::Key_F1);
        QVERIFY(handbook_of(*handbook_of(*window_)) == nullptr);
    }

    void a_project_has_no_help_menu_but_f1() {
        write("dokumente/Kelvara/projekt.ini", "[VELDRA]\r\nTitel=Projekt\r\n");
        start("projekt.ini");
        QVERIFY(!action("m_torvel_hilfe")->isVisible());
        QTest::keyClick(window_.get(), Qt::Key_F1);
        QCOMPARE(shown_page(*window_), text("index"));
    }

    void program_information_tells_the_date_of_the_version_file() {
        write("programm/VELDRA.VRS", "[VERSION]\r\nDatum=  21.11.2026 \r\n");
        start();
        logo()->accept();
        QTRY_VERIFY(logo() == nullptr);
        action("m_hilfe_proginfo")->trigger();
        QCOMPARE(of_logo<QLabel>("lbl_version")->text(), text("Version erstellt am 21.11.2026"));
        QVERIFY(!of_logo<QCheckBox>("chk_bestaetigen")->isVisible());
        QTest::keyClick(logo(), Qt::Key_Return);
        QTRY_VERIFY(logo() == nullptr);
    }

    void without_a_version_file_no_version_is_told() {
        start();
        logo()->accept();
        QTRY_VERIFY(logo() == nullptr);
        action("m_hilfe_proginfo")->trigger();
        QCOMPARE(of_logo<QLabel>("lbl_version")->text(), QString());
    }

    void the_file_of_news_opens_in_the_viewer() {
        write("programm/V_NEUES.HLP", "Neues");
        start();
        logo()->accept();
        catch_documents();
        action("m_hilfe_neues")->trigger();
        QCOMPARE(opened_, path("programm/V_NEUES.HLP"));
        QVERIFY(handbook_of(*window_) == nullptr);
    }

    void without_a_file_of_news_the_handbook_tells_them() {
        start();
        logo()->accept();
        catch_documents();
        action("m_hilfe_neues")->trigger();
        QCOMPARE(opened_, QString());
        QCOMPARE(shown_page(*window_), text("neues"));
    }

    void without_a_viewer_the_handbook_tells_the_news() {
        write("programm/V_NEUES.HLP", "Neues");
        start();
        logo()->accept();
        catch_documents();
        viewer_ = false;
        action("m_hilfe_neues")->trigger();
        QCOMPARE(opened_, path("programm/V_NEUES.HLP"));
        QCOMPARE(shown_page(*window_), text("neues"));
    }

    /// Each dialog of the source tree has its page, by the object name it gives itself.
    void every_dialog_has_its_page() {
        static const QRegularExpression name(
            text("^    setObjectName\\(QStringLiteral\\(\"(frm[^\"]+)\"\\)\\);"),
            QRegularExpression::MultilineOption);
        const FrmHandbuch handbook(nullptr);
        QStringList windows;
        QDirIterator files(text(SOURCE_DIR), {text("frm*.cpp")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const auto found = name.match(QString::fromUtf8(file.readAll()));
            if (found.hasMatch() && found.captured(1) != text("frmHandbuch")) {
                windows.append(found.captured(1));
            }
        }
        QVERIFY(windows.contains(text("frmTorvel")));
        QVERIFY(windows.contains(text("frmDarstellungen")));
        for (const QString& window : windows) {
            const QString page = handbook_page(window);
            QVERIFY2(!page.isEmpty(), qPrintable(window));
            QVERIFY2(QFile::exists(text(":/handbuch/") + page + text(".md")), qPrintable(window));
        }
        QCOMPARE(handbook_page(text("frmGibtEsNicht")), QString());
    }
};

QTEST_MAIN(FrmTorvelHelpTest)
#include "frmTorvel_help_wintest.moc"
