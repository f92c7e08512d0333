#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <memory>

#include "windows/forms/frmDarstellungen_page.h"
#include "windows/qt/qt_user_interface.h"
#include "windows/qt/session_editor.h"

class QPushButton;
class QTabWidget;

namespace veldra {

class HintLine;

/// Sets how objects look. The dialog edits the live settings, so that its samples show what is set;
/// OK keeps them, Abbrechen and closing return to those of its opening. The picture is left to the
/// caller, who draws it anew when the dialog has finished.
class FrmDarstellungen final : public QDialog, public SessionEditor {
    Q_OBJECT

 public:
    /// `session` and `measurer` outlive the dialog, and so does the printer, which may be null.
    FrmDarstellungen(QWidget* window, Session& session, TextMeasurer& measurer, Printer* printer);

    ~FrmDarstellungen() override;
    FrmDarstellungen(const FrmDarstellungen&) = delete;
    FrmDarstellungen& operator=(const FrmDarstellungen&) = delete;

    /// The dialogs for colours and fonts.
    [[nodiscard]] Choosers& choosers() { return context_.choosers; }
    /// Mouse pointer of the main window: 11 while OK works, 0 afterwards. May be empty.
    std::function<void(int)> set_mouse_pointer;

    [[nodiscard]] DisplayPage& page(DisplayTab tab) {
        return *pages_[static_cast<std::size_t>(tab)];
    }

    void accept() override;
    void reject() override;
    void give_up_edits() override;

 protected:
    void showEvent(QShowEvent* event) override;

 private:
    void build();
    [[nodiscard]] QWidget* build_scales();
    void build_pages();
    [[nodiscard]] QWidget* build_buttons();
    void refresh_all();
    /// Reads what stands unread on the tab that was shown, and shows another one.
    void change_tab(int index);
    [[nodiscard]] bool check_scales();

    QtUserInterface ui_;
    DisplayContext context_;
    double plot_massstab_;  ///< at the opening
    std::array<DisplayPage*, display_tab_count> pages_{};
    std::unique_ptr<ScaleCombo> cbo_grundriss_mass_;
    std::unique_ptr<ScaleCombo> cbo_ueberhoehung_;
    QTabWidget* tab_darstellungen_ = nullptr;
    std::size_t shown_tab_ = 0;
    bool left_ = false;  ///< the session holds what the dialog leaves behind
    HintLine* lbl_hinweis_ = nullptr;
    QPushButton* cmd_ok_ = nullptr;
    QPushButton* cmd_abbrechen_ = nullptr;
};

}  // namespace veldra
