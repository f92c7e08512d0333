#include "windows/qt/qt_print_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTimer>

#include <gmock/gmock.h>

#include "queue_fixture.h"
#include "recording_interface.h"

namespace veldra {
namespace {

using test::file_device;
using test::service;

/// What the user sees and does in one form.
class User {
 public:
    /// Acts in the form as soon as it is open. `action` ends it by one of its buttons.
    explicit User(std::function<void(QDialog&)> action) : action_(std::move(action)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (form != nullptr) {
                ++forms_seen;
                action_(*form);
            }
        });
        timer_.start(10);
    }

    static QComboBox& names(QDialog& form) {
        return *form.findChild<QComboBox*>(QStringLiteral("cbo_standarddrucker"));
    }
    static QCheckBox& box(QDialog& form) {
        return *form.findChild<QCheckBox*>(QStringLiteral("chk_ausgabe_datei"));
    }
    static void press(QDialog& form, QDialogButtonBox::StandardButton button) {
        form.findChild<QDialogButtonBox*>()->button(button)->click();
    }

    int forms_seen = 0;

 private:
    std::function<void(QDialog&)> action_;
    QTimer timer_;
};

class QtPrintDialogTest : public test::QueueTest {
 protected:
    void SetUp() override {
        test::QueueTest::SetUp();
        if (!IsSkipped()) {
            printers = std::make_unique<QtPrinters>(file_device(), measurer);
            dialog = std::make_unique<QtPrintDialog>(*printers, nullptr);
            dialog->choose_file = [this](QWidget*) {
                ++files_asked;
                return QString::fromStdString(
                    files_asked <= refused_files ? "" : folder.path("plot.pdf"));
            };
        }
    }

    testing_support::TempFolder folder;
    std::unique_ptr<QtPrinters> printers;
    std::unique_ptr<QtPrintDialog> dialog;
    int files_asked = 0;
    int refused_files = 0;
};

TEST_F(QtPrintDialogTest, PrintFormOffersAllPrintersAndHasItsBoxTicked) {
    User user([](QDialog& form) {
        EXPECT_EQ(form.objectName(), QStringLiteral("dlg_torvel_drucken"));
        EXPECT_EQ(User::names(form).count(), 2);
        EXPECT_EQ(User::names(form).currentText(), QStringLiteral("Plotter"));
        EXPECT_TRUE(User::box(form).isVisible());
        EXPECT_TRUE(User::box(form).isChecked());
        User::press(form, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(dialog->ShowPrinter(36), 36);
    EXPECT_EQ(files_asked, 1);
    EXPECT_EQ(user.forms_seen, 1);
}

TEST_F(QtPrintDialogTest, UntickedBoxClearsItsFlagAndAsksForNoFile) {
    User user([](QDialog& form) {
        User::box(form).setChecked(false);
        User::press(form, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(dialog->ShowPrinter(36), 4);
    EXPECT_EQ(files_asked, 0);
}

TEST_F(QtPrintDialogTest, BuiltInDeviceAsksForItsFileItself) {
    User user([](QDialog& form) {
        User::names(form).setCurrentIndex(1);
        User::press(form, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(dialog->ShowPrinter(36), 36);
    EXPECT_EQ(files_asked, 0);
    EXPECT_EQ(printers->default_printer(), 1);
}

TEST_F(QtPrintDialogTest, FormComesBackWhenNoFileIsNamed) {
    refused_files = 1;
    User user([](QDialog& form) { User::press(form, QDialogButtonBox::Ok); });
    EXPECT_EQ(dialog->ShowPrinter(36), 36);
    EXPECT_EQ(files_asked, 2);
    EXPECT_EQ(user.forms_seen, 2);
}

TEST_F(QtPrintDialogTest, CancelledPrintFormEndsTheQuestionAndTheJob) {
    User user([](QDialog& form) { User::press(form, QDialogButtonBox::Cancel); });
    Session session;
    CheckPrinter(session, printers.get());
    session.printer.druck_in_datei = -1;
    test::RecordingInterface ui;
    PreparePrintToFile(session, *printers, ui, *dialog);
    EXPECT_EQ(user.forms_seen, 1);
    EXPECT_EQ(session.printer.druck_in_datei, 0);
    EXPECT_FALSE(printers->begin_job({"Netz"}));
}

TEST_F(QtPrintDialogTest, SetupFormHasNoBoxAndSetsTheDefaultPrinter) {
    User user([](QDialog& form) {
        EXPECT_FALSE(User::box(form).isVisible());
        User::names(form).setCurrentIndex(1);
        User::press(form, QDialogButtonBox::Ok);
    });
    EXPECT_EQ(dialog->ShowPrinter(64), 64);
    EXPECT_EQ(printers->default_printer(), 1);
    EXPECT_EQ(printers->DeviceName(), "Plotter");
}

TEST_F(QtPrintDialogTest, CancelledSetupFormChangesNothing) {
    User user([](QDialog& form) {
        User::names(form).setCurrentIndex(1);
        User::press(form, QDialogButtonBox::Cancel);
    });
    EXPECT_EQ(dialog->ShowPrinter(64), 64);
    EXPECT_EQ(printers->default_printer(), 0);
    EXPECT_TRUE(printers->begin_job({"Netz"}));
}

TEST_F(QtPrintDialogTest, JobOfAQueueGoesIntoTheFileThatTheFormHasAskedFor) {
    User user([](QDialog& form) { User::press(form, QDialogButtonBox::Ok); });
    Session session;
    CheckPrinter(session, printers.get());
    session.printer.druck_in_datei = -1;
    test::RecordingInterface ui;
    PreparePrintToFile(session, *printers, ui, *dialog);
    EXPECT_EQ(session.printer.druck_in_datei, -1);
    const int before = service().jobs_received();
    ASSERT_TRUE(printers->begin_job({"Netz"}));
    printers->begin_sheet({"A", "1.1"});
    printers->end_job();
    EXPECT_EQ(testing_support::file_bytes(folder.path("plot.pdf")).substr(0, 5), "%PDF-");
    EXPECT_EQ(service().jobs_received(), before);
}

}  // namespace
}  // namespace veldra
