#pragma once

#include <map>

#include "dialog_driver.h"
#include "settings/default_profile.h"
#include "text/codepage.h"
#include "torvel_fixture.h"

// Runs of the program one after the other, and the bytes that lie on the disk in between. They are
// worked out by hand.
namespace veldra::test {

using namespace testing_support;

constexpr const char* ini = "dokumente/Kelvara/VELDRA.INI";
constexpr const char* network_file = "ve_quadrat.dat";

/// Two points of a part on sheets of its own choice: lying, margin above, legend lower right.
constexpr const char* sheet_network =
    "NETZTEIL A\r\n"
    "MAßSTABGRUNDRISS 1000 3499990.000 5599990.000 70\r\n"
    "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"1\"\r\n"
    "PUNKTSIGNATUR  3500100.000  5600100.000  0  0 1 \"2\"\r\n";

inline QByteArray windows_1252(const char* utf8) {
    return QByteArray::fromStdString(from_utf8(utf8));
}

/// The profile of the defaults with other sections in the place of theirs.
inline QByteArray settings_with(const std::map<const char*, QByteArray>& others) {
    QByteArray bytes;
    for (const char* section : default_settings) {
        const auto other = others.find(section);
        bytes += other == others.end() ? QByteArray(section) : other->second;
    }
    return bytes;
}

/// A main window that can be left and started anew.
class RestartFixture : public TorvelFixture {
 protected:
    /// A dialog that a menu entry has opened.
    template <typename Dialog>
    Dialog& open_dialog(const char* entry) {
        action(entry)->trigger();
        auto* const dialog = window_->findChild<Dialog*>();
        // Keys are those of the main window until the dialog is the active one.
        if (dialog == nullptr || !QTest::qWaitForWindowActive(dialog)) {
            qFatal("%s opens nothing", entry);
        }
        return *dialog;
    }
    static void press(const QWidget& dialog, const char* name) {
        veldra_test::click(veldra_test::control<QPushButton>(dialog, name));
    }
    static QString box_text(const QWidget& dialog, const char* name) {
        return veldra_test::control<QLineEdit>(dialog, name).text();
    }
    static QString combo_text(const QWidget& dialog, const char* name) {
        return veldra_test::control<QComboBox>(dialog, name).currentText();
    }
    static bool is_checked(const QWidget& dialog, const char* name) {
        return veldra_test::control<QAbstractButton>(dialog, name).isChecked();
    }

    void leave() {
        action("m_datei_beenden")->trigger();
        QVERIFY(!window_->isVisible());
        QVERIFY(!window_->run().programm_aktiv);
    }
    /// Another run of the program, with nothing left of the one before but its files.
    void start_again() {
        window_.reset();
        session_ = Session();
        start();
        logo()->accept();
        window_->choose_file = [this] { return path(network_file); };
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
    }

    /// What stands behind the settings at the end of the first run.
    [[nodiscard]] QByteArray recent_files(const char* bestaetigung = "") const {
        return "[START]\r\nBestaetigung=" + QByteArray(bestaetigung) +
               "\r\n[GRAPHIKDATEIEN]\r\nGraphikdatei_1=" + path(network_file).toUtf8() +
               "\r\nGraphikdatei_2=\r\nGraphikdatei_3=\r\nGraphikdatei_4=\r\n";
    }
    void expect_profile(const QByteArray& settings, const char* bestaetigung = "") const {
        QCOMPARE(QString::fromLatin1(read(ini)),
                 QString::fromLatin1(settings + recent_files(bestaetigung)));
    }
    /// The line of the graphic file that begins with a keyword, without its end.
    [[nodiscard]] QByteArray record(const char* keyword) const {
        for (const QByteArray& line : read(network_file).split('\n')) {
            if (line.startsWith(windows_1252(keyword))) {
                return line.endsWith('\r') ? line.chopped(1) : line + " (without CR)";
            }
        }
        return "none";
    }
};

}  // namespace veldra::test
