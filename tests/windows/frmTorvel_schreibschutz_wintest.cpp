// Files that cannot be written back, in the main window.
#include <QLabel>
#include <QListWidget>
#include <optional>

#include "dialog_driver.h"
#include "other_user.h"
#include "torvel_fixture.h"

using namespace veldra;
using namespace veldra::test;
using veldra_test::control;
using veldra_test::when_shown;

namespace {

constexpr const char* network_in_parts =
    "NETZTEIL A\r\nMA\xDFSTABGRUNDRISS 1000\r\n"
    "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"1\"\r\n"
    "PUNKTSIGNATUR  3500100.000  5600100.000  0  0 1 \"2\"\r\n"
    "NETZTEIL B\r\nMA\xDFSTABGRUNDRISS 1000\r\n"
    "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"3\"\r\n"
    "PUNKTSIGNATUR  3500100.000  5600100.000  0  0 1 \"4\"\r\n";

}  // namespace

class UnwritableFileTest : public TorvelFixture {
    Q_OBJECT

 private:
    void open_in_folder(bool read_only) {
        write("netze/ve_quadrat.dat", network_in_parts);
        start();
        logo()->accept();
        QTest::qWait(150);  // the window's first size has been followed
        constexpr auto all_read = QFile::ReadOwner | QFile::ReadUser | QFile::ReadGroup |
                                  QFile::ReadOther | QFile::ExeOwner | QFile::ExeUser |
                                  QFile::ExeGroup | QFile::ExeOther;
        QVERIFY(QFile::setPermissions(root_->path(), all_read | QFile::WriteOwner));
        std::optional<testing_support::AsUser> user;
        if (read_only) {
            QVERIFY(QFile::setPermissions(path("netze/ve_quadrat.dat"), all_read));
            if (::geteuid() == 0) {
                user.emplace(testing_support::anna, testing_support::others);
                QVERIFY(user->became());
            }
        }
        window_->choose_file = [this] { return path("netze/ve_quadrat.dat"); };
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
    }
    [[nodiscard]] QLabel& mark() const {
        return control<QLabel>(*window_, "lbl_schreibgeschuetzt");
    }
    /// Presses that button of the next box.
    void answer_with(const char* button) {
        when_shown<QMessageBox>([this, button](QMessageBox& box) {
            box_text_ = box.text();
            const QString pictures = qEnvironmentVariable("VELDRA_PICTURES");
            if (!pictures.isEmpty()) {
                QVERIFY(box.grab().save(pictures + text("/schreibschutz.png")));
            }
            control<QPushButton>(box, button).click();
        });
    }

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void the_status_line_tells_a_read_only_file() {
        open_in_folder(true);
        QVERIFY(mark().isVisible());
        QCOMPARE(mark().text(), text("schreibgeschützt"));
        const QString pictures = qEnvironmentVariable("VELDRA_PICTURES");
        if (!pictures.isEmpty()) {
            QVERIFY(window_->grab().save(pictures + text("/status.png")));
        }
        veldra_test::MessageBoxes boxes;
        QVERIFY(window_->close());
        QVERIFY(boxes.seen.empty());
        QCOMPARE(read("netze/ve_quadrat.dat"), QByteArray(network_in_parts));
    }

    void the_status_line_is_silent_about_others() {
        open_in_folder(false);
        QVERIFY(!mark().isVisible());
    }

    void changes_of_a_read_only_file_go_where_the_user_wants() {
        open_in_folder(true);
        session_.pu[2].pu_bez_rechts = 70;
        window_->choose_other_file = [this] { return path("ve_neu.dat"); };
        answer_with("cmd_speichern_unter");
        QVERIFY(window_->close());
        QVERIFY(box_text_.contains(text("schreibgeschützt")));
        QVERIFY(read("ve_neu.dat").simplified().contains("\"2\" 70.0 0.0"));
        QCOMPARE(read("netze/ve_quadrat.dat"), QByteArray(network_in_parts));
    }

    void a_choice_of_no_file_asks_again() {
        open_in_folder(true);
        session_.pu[2].pu_bez_rechts = 70;
        window_->choose_other_file = [this] {
            answer_with("cmd_verwerfen");
            return QString();
        };
        answer_with("cmd_speichern_unter");
        QVERIFY(window_->close());
        QCOMPARE(read("netze/ve_quadrat.dat"), QByteArray(network_in_parts));
    }

    void a_folder_that_vanished_does_not_end_the_program() {
        open_in_folder(false);
        bool failed = false;
        window_->on_failure = [&failed](const std::exception&) { failed = true; };
        QVERIFY(QDir(root_->path()).rename(text("netze"), text("weg")));
        answer_with("cmd_verwerfen");
        auto& list = control<QListWidget>(*window_, "lst_netzteile");
        list.setCurrentRow(1);
        veldra_test::click(control<QPushButton>(*window_, "cmd_anzeigen"));
        QVERIFY(!failed);
        QVERIFY(box_text_.contains(text("Wiederholen: ")));
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QVERIFY(picture().shown().isNull());
        QCOMPARE(window_->windowTitle(), text("VELDRA - [keine Graphikdatei eröffnet]"));
        QTRY_VERIFY(window_->findChild<QDialog*>(text("frmNetzteile")) == nullptr);
        // And everything goes on.
        write("ve_zwei.dat", square_network);
        window_->choose_file = [this] { return path("ve_zwei.dat"); };
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
    }
};

QTEST_MAIN(UnwritableFileTest)
#include "frmTorvel_schreibschutz_wintest.moc"
