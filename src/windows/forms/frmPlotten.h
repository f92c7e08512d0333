#pragma once

#include <QDialog>
#include <array>
#include <cstdint>
#include <functional>

#include "commands/lifecycle.h"
#include "dialogs/plot_options.h"
#include "windows/qt/qt_user_interface.h"
#include "windows/qt/session_editor.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace veldra {

class HintLine;
class PaperSymbol;

/// The plot settings of the current network part, edited live. It stands beside its window, where
/// it hides nothing of the picture if there is room.
class FrmPlotten final : public QDialog, public SessionEditor {
    Q_OBJECT

 public:
    /// `session` and what `desk` refers to outlive the dialog.
    FrmPlotten(QWidget* window, Session& session, const Desk& desk);
    ~FrmPlotten() override;
    FrmPlotten(const FrmPlotten&) = delete;
    FrmPlotten& operator=(const FrmPlotten&) = delete;

    /// Draws the preview after OK; may be empty.
    std::function<void()> redraw_preview;
    /// Shows in the list of network parts that a part (from 1) is marked for plotting or not, and
    /// selects its row if it is; called after OK with a part open; may be empty.
    std::function<void(std::int32_t part, bool marked)> mark_part;

    void accept() override;
    void reject() override;
    void give_up_edits() override;

 protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void build();
    void build_part(QVBoxLayout& column);
    void build_scale(QVBoxLayout& column);
    [[nodiscard]] QGroupBox* build_format();
    [[nodiscard]] QGroupBox* build_margin();
    void build_sheets(QVBoxLayout& column);
    /// Brings the controls into line with session and options, but for texts that are being typed.
    void refresh();
    void show_scale();
    void show_counts();
    void take_scale();
    void leave_scale();
    /// Shows what a choice led to; tells the user if it was refused.
    void follow(bool taken);
    void refuse();
    void choose_part(bool plotted);

    Session& session_;
    Desk desk_;
    QtUserInterface ui_;
    PlotOptions options_;
    bool left_ = false;  ///< the session holds what the dialog leaves behind
    std::array<QRadioButton*, 2> opt_netzteil_{};
    QGroupBox* fra_massstab_ = nullptr;
    QComboBox* cbo_grundriss_mass_ = nullptr;
    QGroupBox* fra_format_ = nullptr;
    std::array<QRadioButton*, 2> opt_format_{};
    std::array<QRadioButton*, 4> opt_rand_{};  ///< 1 to 3
    PaperSymbol* img_hochformat_ = nullptr;
    PaperSymbol* img_querformat_ = nullptr;
    QCheckBox* chk_format_blatt_ = nullptr;
    QLineEdit* txt_format_rechts_ = nullptr;
    QLineEdit* txt_format_hoch_ = nullptr;
    QLabel* lbl_format_autorechts_ = nullptr;
    QLabel* lbl_format_autohoch_ = nullptr;
    QCheckBox* chk_plotternull_ = nullptr;
    QCheckBox* chk_ohne_leere_ = nullptr;
    HintLine* lbl_hinweis_ = nullptr;
    QPushButton* cmd_ok_ = nullptr;
    QPushButton* cmd_abbrechen_ = nullptr;
};

/// Puts a dialog to the right of its window, or to the left of it, or as far to the right as the
/// screen goes.
void place_beside(QWidget& dialog, const QWidget& window);

}  // namespace veldra
