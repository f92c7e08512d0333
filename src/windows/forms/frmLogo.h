#pragma once

#include <QDialog>
#include <string>

class QCheckBox;
class QLabel;
class QPushButton;
class QTimer;

namespace veldra {

/// The logo at the start, and again from the Help menu.
class FrmLogo final : public QDialog {
    Q_OBJECT

 public:
    enum class ShownBy { start, help };

    /// How long a logo that need not be confirmed stands, milliseconds.
    static constexpr int usual_wait = 5000;

    /// `bestaetigung` is "N" if the logo need not be confirmed, else ""; it follows the check box
    /// and must outlive the dialog. `version` is the text about the version, UTF-8.
    FrmLogo(QWidget* window, std::string& bestaetigung, ShownBy shown_by,
            const std::string& version, int wait = usual_wait);

    /// Closing by the keyboard or the window frame: only when `cmd_ok` could do it.
    void reject() override;

 protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

 private:
    void build(const std::string& version);
    void activate();
    void centre();
    void follow_check_box(bool ticked);
    void end_wait();

    std::string& bestaetigung_;
    ShownBy shown_by_;
    int wait_;
    QCheckBox* chk_bestaetigen_ = nullptr;
    QPushButton* cmd_ok_ = nullptr;
    QLabel* lbl_version_ = nullptr;
    QTimer* timer_ = nullptr;
    bool activated_ = false;
};

}  // namespace veldra
