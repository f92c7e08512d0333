#pragma once

#include <QDialog>
#include <QTimer>
#include <array>

#include "dialogs/legend_options.h"
#include "model/session.h"
#include "windows/qt/choosers.h"
#include "windows/qt/session_editor.h"

class QCheckBox;
class QGridLayout;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace veldra {

class HintLine;

/// Edits the four title lines of the legend and its place. However it is closed, what it shows is
/// taken over.
class FrmLegende final : public QDialog, public SessionEditor {
    Q_OBJECT

 public:
    /// `session` and `printer` outlive the dialog; without a printer that is null.
    FrmLegende(QWidget* window, Session& session, Printer* printer);

    ~FrmLegende() override;
    FrmLegende(const FrmLegende&) = delete;
    FrmLegende& operator=(const FrmLegende&) = delete;

    /// The dialog `dlg_schrift`.
    FaceChooser choose_font;

    /// Closing in any way.
    void done(int result) override;
    /// Takes texts and place over; a height counts when its box has been left.
    void give_up_edits() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
    void showEvent(QShowEvent* event) override;

 private:
    /// Controls of a line.
    struct Line {
        QLineEdit* txt_legende = nullptr;
        QCheckBox* chk_standard = nullptr;  ///< null for line 1
        QLineEdit* txt_schrift = nullptr;
        QString shown_size;
        QString own_text;  ///< what is shown again when the standard text is switched off
    };

    void build();
    void add_line(QGridLayout& grid, std::size_t number);
    QWidget* build_position();
    QWidget* build_buttons();
    void activate();
    void show_size(std::size_t number);
    void take_size(std::size_t number);
    void ask_for_font(std::size_t number);
    void follow_standard(std::size_t number, bool standard);
    void store_texts();
    Line& line(std::size_t number) { return lines_[number - 1]; }

    Session& session_;
    Printer* printer_;
    std::array<Line, legend_line_count> lines_;
    std::array<QRadioButton*, 4> opt_posi_{};
    HintLine* lbl_hinweis_ = nullptr;
    QPushButton* cmd_ok_ = nullptr;
    QTimer select_timer_;
    QLineEdit* entered_box_ = nullptr;  ///< which got the focus last
};

}  // namespace veldra
