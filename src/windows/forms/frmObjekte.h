#pragma once

#include <QButtonGroup>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <cstdint>
#include <functional>

#include "dialogs/object_selection.h"
#include "windows/qt/session_editor.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QPushButton;
class QTimer;
class QToolButton;

namespace veldra {

/// "Auswahl Objekte": chooses what is shown of the current network part. Each choice goes to the
/// session at once; leaving the dialog in any way takes them, and `taken` is then called once.
class FrmObjekte final : public QDialog, public SessionEditor {
    Q_OBJECT

 public:
    FrmObjekte(QWidget* window, Session& session, std::function<void(SelectionLeft)> taken);
    ~FrmObjekte() override;
    FrmObjekte(const FrmObjekte&) = delete;
    FrmObjekte& operator=(const FrmObjekte&) = delete;

    void done(int result) override;
    void give_up_edits() override;

 protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void build();
    QGroupBox* build_observations();
    QGroupBox* build_tests();
    QGroupBox* build_signatures();
    QGroupBox* build_values();
    QGroupBox* build_labels();
    QGroupBox* build_districts();
    QWidget* build_district_labels();
    QWidget* build_meridian();
    QGroupBox* build_system();
    QGroupBox* build_boundaries();

    /// Lets a group of options store its code in a variable of the selection.
    void store_choice(QButtonGroup* options, std::int16_t ObjectSelection::*variable);
    void store_tick(QCheckBox* box, std::int16_t ObjectSelection::*variable);

    /// Brings all controls into line with the selection.
    void synchronise();
    void synchronise_tests(const SelectionControls& controls);
    void synchronise_system(const SelectionControls& controls);
    void synchronise_districts(const SelectionControls& controls);
    void take_typed_meridian();
    void step(int by);
    bool meridian_key(int key);

    Session& session_;
    std::function<void(SelectionLeft)> taken_;
    bool filling_ = false;  ///< the controls are being set by the program
    bool left_ = false;

    QButtonGroup* opt_beob_ = nullptr;
    QCheckBox* chk_test_beob_ = nullptr;
    QGroupBox* fra_test_ = nullptr;
    QButtonGroup* opt_test_ = nullptr;
    QButtonGroup* opt_pusi_ = nullptr;
    QButtonGroup* opt_puwe_ = nullptr;
    QCheckBox* chk_epbe_ = nullptr;
    QCheckBox* chk_test_restkl_ = nullptr;
    QButtonGroup* opt_pube_ = nullptr;
    QGroupBox* fra_nummebez_ = nullptr;
    QButtonGroup* opt_nube_ = nullptr;
    QLabel* lbl_nbez_ = nullptr;
    QButtonGroup* opt_nbez_ = nullptr;
    QLabel* lbl_nube_merizon_ = nullptr;
    QToolButton* cmd_nubemerit_1_ = nullptr;
    QLineEdit* txt_nubemerit_ = nullptr;
    QTimer* select_timer_ = nullptr;
    QToolButton* cmd_nubemerit_2_ = nullptr;
    QGroupBox* fra_bezug_ = nullptr;
    QButtonGroup* opt_bezu_ = nullptr;
    QLabel* lbl_bezu_elli_ = nullptr;
    QComboBox* cbo_bezu_elli_ = nullptr;
    QLabel* lbl_bezu_abbi_ = nullptr;
    QComboBox* cbo_bezu_abbi_ = nullptr;
    QGroupBox* fra_verwaltung_ = nullptr;
    QButtonGroup* opt_verw_ = nullptr;
    QPushButton* cmd_ok_ = nullptr;
};

}  // namespace veldra
