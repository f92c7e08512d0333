#pragma once

#include <QDialog>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>

#include "dialogs/boundary_options.h"
#include "model/session.h"
#include "windows/qt/qt_user_interface.h"

class QComboBox;
class QGroupBox;
class QHBoxLayout;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace veldra {

/// Edits the boundary file and the datum transitions, and writes a reduced copy of the file.
class FrmVerwopt final : public QDialog {
    Q_OBJECT

 public:
    /// `session` outlives the dialog.
    FrmVerwopt(QWidget* window, Session& session);
    ~FrmVerwopt() override;
    FrmVerwopt(const FrmVerwopt&) = delete;
    FrmVerwopt& operator=(const FrmVerwopt&) = delete;

    /// Asks for the boundary file (`dlg_grendatei`); "" if there is none. Tests put an answer in
    /// its place.
    std::function<QString()> choose_file;
    /// Where the dialog for it begins; shared with the other file dialogs.
    std::shared_ptr<QString> last_folder = std::make_shared<QString>();

    /// Stores what is shown, if all transitions can be read.
    void accept() override;
    /// Leaves everything as it was; while a file is being reduced, that is given up instead.
    void reject() override;

 protected:
    void showEvent(QShowEvent* event) override;

 private:
    using RowBoxes = std::array<QLineEdit*, datum_row_count>;

    void build();
    QWidget* build_file();
    QWidget* build_systems();
    QWidget* build_reduction();
    QWidget* build_rows(const QString& frame, const QString& title, const QString& box,
                        RowBoxes& boxes);
    QWidget* build_buttons();
    QPushButton* add_button(const QString& name, const QString& caption, const QString& spoken);

    void show_options(const BoundaryOptions& options);
    [[nodiscard]] BoundaryOptions shown_options() const;
    [[nodiscard]] std::string typed_file() const;
    void choose_boundary_file();
    void check_file();
    void check_row(QLineEdit& box);
    bool check_all_rows();
    void refuse_row(QLineEdit& box);
    void return_to_refused_row();
    void optimise();
    /// Serves the user while the file is being reduced; false to give up.
    bool watch(double share);
    void lock(bool running);
    void offer_reduction();
    void report_missing_file();

    Session& session_;
    QtUserInterface ui_;
    QLineEdit* txt_grendatei_ = nullptr;
    QPushButton* cmd_grendatei_ = nullptr;
    QComboBox* cbo_gren_elli_ = nullptr;
    QComboBox* cbo_gren_abbi_ = nullptr;
    QPushButton* cmd_gren_opti_ = nullptr;
    QProgressBar* pgb_gren_opti_ = nullptr;
    QWidget* contents_ = nullptr;  ///< all but the row of buttons
    RowBoxes txt_gren_tr_{};
    RowBoxes txt_numb_tr_{};
    QPushButton* cmd_standard_ = nullptr;
    QPushButton* cmd_ok_ = nullptr;
    QPushButton* cmd_abbrechen_ = nullptr;
    QTimer refused_timer_;
    QLineEdit* refused_row_ = nullptr;  ///< whose text could not be read last
    bool running_ = false;              ///< a file is being reduced
    bool give_up_ = false;
    bool left_ = false;  ///< the dialog is being left: boxes need not be read any more
};

}  // namespace veldra
