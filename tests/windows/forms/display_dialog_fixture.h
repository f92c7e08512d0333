#pragma once

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <memory>
#include <optional>

#include "control_names.h"
#include "dialog_driver.h"
#include "settings/defaults.h"
#include "windows/forms/frmDarstellungen.h"
#include "windows/forms/frmStrichst.h"
#include "windows/qt/qt_text_measurer.h"
#include "windows/qt/sample_picture.h"

namespace veldra_test {

/// The tabs' buttons "Standard", in the order of the tabs.
constexpr const char* standard_buttons[] = {
    "cmd_standard_bezpun_screen", "cmd_standard_bezpun_plott", "cmd_standard_art_screen",
    "cmd_standard_art_plott",     "cmd_standard_vekt_lage",    "cmd_standard_vekt_höhe",
    "cmd_standard_test",          "cmd_standard_verwgrenz"};

inline void show_tab(const QWidget& dialog, veldra::DisplayTab tab) {
    control<QTabWidget>(dialog, "tab_darstellungen").setCurrentIndex(static_cast<int>(tab));
    QApplication::processEvents();
}

/// Presses a button "Strich" and answers the picker with a width; gives its caption.
inline QString pick_width(const QWidget& dialog, const char* button, int width) {
    QString caption;
    when_shown<veldra::FrmStrichst>([&caption, width](veldra::FrmStrichst& picker) {
        caption = picker.windowTitle();
        click(control<veldra::SamplePicture>(picker, numbered("pic_strichst_", width).constData()));
        click(control<QPushButton>(picker, "cmd_ok"));
    });
    click(control<QPushButton>(dialog, button));
    return caption;
}

/// The width that the picker behind a button "Strich" shows as chosen; it is given up. -1: none.
inline int offered_width(const QWidget& dialog, const char* button) {
    constexpr int widths = 7;
    int chosen = -1;
    when_shown<veldra::FrmStrichst>([&chosen](veldra::FrmStrichst& picker) {
        for (int i = 0; i < widths; ++i) {
            const QByteArray name = numbered("pic_strichst_", i);
            if (control<veldra::SamplePicture>(picker, name.constData()).is_chosen()) {
                chosen = i;
            }
        }
        click(control<QPushButton>(picker, "cmd_abbrechen"));
    });
    click(control<QPushButton>(dialog, button));
    return chosen;
}

/// Answers in the place of the dialogs for colours and fonts; without one the user gives up.
struct ChooserAnswers {
    std::optional<std::int32_t> colour;
    std::optional<veldra::FontChoice> font;
    QStringList asked;  ///< names of the dialogs that were opened
    std::int32_t offered_colour = -1;
    veldra::FontChoice offered_font;

    /// Puts the answers in place; they outlive the dialog.
    void put_into(veldra::FrmDarstellungen& dialog) {
        dialog.choosers().colour = [this](QWidget*, const QString& name, std::int32_t offered) {
            asked << name;
            offered_colour = offered;
            return colour;
        };
        dialog.choosers().font = [this](QWidget*, const QString& name,
                                        const veldra::FontChoice& offered) {
            asked << name;
            offered_font = offered;
            return font;
        };
    }
};

/// The display options on a session of its own, with the defaults and the scale 1 : 1000.
class DisplayDialogFixture : public QObject {
 protected:
    void make_session() {
        session_ = std::make_unique<veldra::Session>();
        veldra::standard_alle(*session_);
        session_->plot.plot_massstab = 0.001;
        boxes_ = std::make_unique<MessageBoxes>();
        answers_ = ChooserAnswers();
    }
    void close_down() {
        dialog_.reset();
        boxes_.reset();
        session_.reset();
    }

    veldra::FrmDarstellungen& open(veldra::Printer* printer = nullptr) {
        dialog_ =
            std::make_unique<veldra::FrmDarstellungen>(nullptr, *session_, measurer_, printer);
        answers_.put_into(*dialog_);
        dialog_->show();
        if (!QTest::qWaitForWindowActive(dialog_.get())) {
            qFatal("the dialog does not become the active window");
        }
        return *dialog_;
    }
    void open_at(veldra::DisplayTab tab, veldra::Printer* printer = nullptr) {
        open(printer);
        show_tab(tab);
    }
    void show_tab(veldra::DisplayTab tab) const { veldra_test::show_tab(*dialog_, tab); }

    [[nodiscard]] QLineEdit& box(const char* name) const {
        return control<QLineEdit>(*dialog_, name);
    }
    [[nodiscard]] QComboBox& combo(const char* name) const {
        return control<QComboBox>(*dialog_, name);
    }
    [[nodiscard]] QPushButton& button(const char* name) const {
        return control<QPushButton>(*dialog_, name);
    }
    [[nodiscard]] veldra::SamplePicture& picture(const char* name) const {
        return control<veldra::SamplePicture>(*dialog_, name);
    }
    /// Text of a label, without the mark of its shortcut.
    [[nodiscard]] QString label(const char* name) const {
        return control<QLabel>(*dialog_, name).text().remove(QLatin1Char('&'));
    }
    [[nodiscard]] veldra::Settings& settings() const { return session_->settings; }

    veldra::QtTextMeasurer measurer_;
    std::unique_ptr<veldra::Session> session_;
    std::unique_ptr<MessageBoxes> boxes_;
    std::unique_ptr<veldra::FrmDarstellungen> dialog_;
    ChooserAnswers answers_;
};

}  // namespace veldra_test
