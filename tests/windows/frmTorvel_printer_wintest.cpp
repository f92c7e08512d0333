#include <QAbstractButton>
#include <QDir>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <memory>

#include "scripted_printer.h"
#include "windows/frmTorvel.h"

using namespace veldra;

namespace {

class CountingDialog final : public PrintDialog {
 public:
    std::int32_t ShowPrinter(std::int32_t flags) override {
        flags_shown.push_back(flags);
        return flags;
    }
    std::vector<std::int32_t> flags_shown;
};

}  // namespace

/// The printer at the start and at the end of the program.
class FrmTorvelPrinterTest : public QObject {
    Q_OBJECT

 private:
    void load(Printer* printer) {
        window_ = std::make_unique<FrmTorvel>(session_, folders_, "");
        if (printer != nullptr) {
            window_->use_printer(*printer, dialog_);
        }
        window_->load();
        window_->findChild<FrmLogo*>(QStringLiteral("frmLogo"))->accept();
    }

    [[nodiscard]] QAction* printer_entry() const {
        return window_->findChild<QAction*>(QStringLiteral("m_optionen_drucker"));
    }

    /// Closes the window; the question that comes is answered by its button of this number.
    void close_answering(int button) {
        QTimer look;
        connect(&look, &QTimer::timeout, this, [&] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                title_ = box->windowTitle();
                box->buttons().at(button)->click();
            }
        });
        look.start(10);
        QVERIFY(window_->close());
    }

    std::unique_ptr<QTemporaryDir> root_;
    SystemFolders folders_;
    Session session_;
    std::unique_ptr<FrmTorvel> window_;
    CountingDialog dialog_;
    QString title_;

 private Q_SLOTS:
    void init() {
        root_ = std::make_unique<QTemporaryDir>();
        const std::string folder = root_->path().toStdString();
        folders_ = {folder, folder, folder};
        dialog_.flags_shown.clear();
        title_.clear();
    }

    void cleanup() {
        window_.reset();
        root_.reset();
    }

    void menu_names_the_printer_with_its_ampersand() {
        test::ScriptedDevice device;
        device.name = "Plotter A & B";
        test::ScriptedPrinter printer({device});
        load(&printer);
        QCOMPARE(printer_entry()->text(), QStringLiteral("&Anwendungsdrucker: Plotter A && B"));
        QCOMPARE(session_.printer.drucker_start, std::string("Plotter A & B"));
    }

    void menu_tells_that_there_is_no_printer() {
        load(nullptr);
        QCOMPARE(printer_entry()->text(), QString::fromUtf8("Druckertreiber nicht verfügbar"));
        QVERIFY(!printer_entry()->isEnabled());
        QVERIFY(window_->close());
    }

    void unchanged_default_printer_ends_without_a_question() {
        test::ScriptedPrinter printer;
        load(&printer);
        QVERIFY(window_->close());
        QVERIFY(dialog_.flags_shown.empty());
        QVERIFY(!window_->run().programm_aktiv);
    }

    void changed_default_printer_may_be_chosen_again_at_the_end() {
        test::ScriptedDevice other;
        other.name = "Other";
        test::ScriptedPrinter printer({test::ScriptedDevice(), other});
        load(&printer);
        printer.set_default(1);
        close_answering(0);
        QCOMPARE(title_, QStringLiteral("Druckerauswahl"));
        QCOMPARE(dialog_.flags_shown, std::vector<std::int32_t>{64});
        QVERIFY(!printer.tracks_default);
        QVERIFY(!window_->run().programm_aktiv);
    }

    void changed_default_printer_may_stay_changed() {
        test::ScriptedDevice other;
        other.name = "Other";
        test::ScriptedPrinter printer({test::ScriptedDevice(), other});
        load(&printer);
        printer.set_default(1);
        close_answering(1);
        QCOMPARE(title_, QStringLiteral("Druckerauswahl"));
        QVERIFY(dialog_.flags_shown.empty());
        QVERIFY(!window_->run().programm_aktiv);
    }
};

QTEST_MAIN(FrmTorvelPrinterTest)
#include "frmTorvel_printer_wintest.moc"
