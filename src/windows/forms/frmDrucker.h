#pragma once

#include <QDialog>
#include <array>
#include <cstdint>
#include <functional>

#include "dialogs/printer_options.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QToolButton;
class QVBoxLayout;

namespace veldra {

class HintLine;
class PaperSymbol;

/// Chooses the application printer and its paper. Each choice goes to the printer at once;
/// Abbrechen and closing return to the printer and the paper of the opening.
class FrmDrucker final : public QDialog {
    Q_OBJECT

 public:
    /// `session` and the printer, which may be null, outlive the dialog.
    FrmDrucker(QWidget* window, Session& session, Printer* printer);
    ~FrmDrucker() override;
    FrmDrucker(const FrmDrucker&) = delete;
    FrmDrucker& operator=(const FrmDrucker&) = delete;

    /// True once the program is ending: closing then leaves the printer alone. May be empty.
    std::function<bool()> is_shutting_down;

    void accept() override;
    void reject() override;

 protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void build();
    void build_printer(QVBoxLayout& column);
    [[nodiscard]] QGroupBox* build_paper();
    [[nodiscard]] QGroupBox* build_area();
    [[nodiscard]] QGroupBox* build_orientation();
    [[nodiscard]] QGroupBox* build_copies();
    void connect_controls();
    void fill_lists();
    void switch_off();

    void choose_printer_at(int index);
    void choose_standard();
    /// Tries the papers or bins from a row on, down (1), up (-1) or only that one (0), until the
    /// printer takes one, and tells those that it did not take.
    void choose_paper_at(int row, int by);
    void choose_bin_at(int row, int by);
    /// A key that goes on in one of these lists: true if it was one.
    bool list_key(const QObject* list, const QKeyEvent& key);
    void write_user_paper();
    /// Shows paper, bin, orientation and sizes as the printer has them now.
    void show_paper();
    void show_paper_code(std::int16_t code);
    void show_colour_and_output();
    void set_copies(int copies);

    Session& session_;
    Printer* printer_;  ///< null as well when there is no printer installed
    PrinterOptions options_;
    bool left_ = false;  ///< the session holds what the dialog leaves behind
    QComboBox* cbo_drucker_ = nullptr;
    QCheckBox* chk_farbdrucker_ = nullptr;
    QCheckBox* chk_druckindatei_ = nullptr;
    QComboBox* cbo_papierformat_ = nullptr;
    QComboBox* cbo_papierschacht_ = nullptr;
    QLineEdit* txt_quer_ = nullptr;
    QLineEdit* txt_hoch_ = nullptr;
    std::array<QRadioButton*, 3> opt_ausrichtung_{};  ///< 1 and 2
    PaperSymbol* img_hoch_an_ = nullptr;
    PaperSymbol* img_hoch_aus_ = nullptr;
    PaperSymbol* img_quer_an_ = nullptr;
    PaperSymbol* img_quer_aus_ = nullptr;
    QLabel* lbl_quer_netto_ = nullptr;
    QLabel* lbl_hoch_netto_ = nullptr;
    QLineEdit* txt_exemplare_ = nullptr;
    QToolButton* cmd_exemplare_plus_ = nullptr;
    QToolButton* cmd_exemplare_minus_ = nullptr;
    QPushButton* cmd_standard_ = nullptr;
    HintLine* lbl_hinweis_ = nullptr;
    QPushButton* cmd_ok_ = nullptr;
    QPushButton* cmd_abbrechen_ = nullptr;
};

}  // namespace veldra
