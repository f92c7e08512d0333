#include "windows/forms/frmObjekte.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QShowEvent>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

#include "dialogs/boundary_options.h"
#include "windows/qt/dialog_area.h"
#include "windows/qt/dialog_controls.h"
#include "windows/qt/dialog_place.h"
#include "windows/qt/hint_line.h"

namespace veldra {

namespace {

constexpr int meridian_letters = 6;
constexpr int indent = 20;  // of a control that belongs to the options above it, logical pixels

QLayout* indented(QWidget* widget) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(indent, 0, 0, 0);
    row->addWidget(widget);
    return row;
}

QVBoxLayout* make_column(QWidget* frame) {
    auto* column = new QVBoxLayout(frame);
    column->setSpacing(2);
    column->setContentsMargins(6, 4, 6, 6);
    return column;
}

}  // namespace

FrmObjekte::FrmObjekte(QWidget* window, Session& session, std::function<void(SelectionLeft)> taken)
    : QDialog(window), session_(session), taken_(std::move(taken)) {
    setObjectName(QStringLiteral("frmObjekte"));
    setWindowTitle(QStringLiteral("Auswahl Objekte"));
    setModal(true);
    build();
    synchronise();
}

FrmObjekte::~FrmObjekte() {
    hide();  // the box loses the focus now, while what it would be read by is still there
}

void FrmObjekte::build() {
    auto* contents = new QWidget;
    auto* columns = new QHBoxLayout(contents);
    columns->setContentsMargins(0, 0, 0, 0);
    const auto add_column = [columns](std::initializer_list<QWidget*> frames) {
        auto* column = new QVBoxLayout;
        for (QWidget* frame : frames) {
            column->addWidget(frame);
        }
        column->addStretch();
        columns->addLayout(column);
    };
    // The order of the keyboard is the order in which the controls are made: down each column.
    auto* observations = build_observations();
    auto* tests = build_tests();
    add_column({observations, tests, build_signatures()});
    auto* values = build_values();
    add_column({values, build_labels()});
    add_column({build_districts()});
    auto* system = build_system();
    add_column({system, build_boundaries()});

    cmd_ok_ =
        make_button(QStringLiteral("cmd_ok"), QStringLiteral("OK"), QStringLiteral("OK"), this);
    cmd_ok_->setDefault(true);
    connect(cmd_ok_, &QPushButton::clicked, this, &QDialog::accept);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(new DialogArea(contents, this));
    auto* hint = new HintLine(this);
    connect(txt_nubemerit_, &QLineEdit::textEdited, hint, [hint](const QString& typed) {
        hint->tell(is_meridian(typed.toStdString())
                       ? QString()
                       : QStringLiteral("Meridianstreifen: 0 bis 119"));
    });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(hint, 1);
    buttons->addWidget(cmd_ok_);
    rows->addLayout(buttons);
}

QGroupBox* FrmObjekte::build_observations() {
    auto* frame = make_frame(QStringLiteral("fra_beob"), QStringLiteral("Be&obachtungen"), this);
    auto* column = make_column(frame);
    opt_beob_ = make_options(QStringLiteral("opt_beob"), frame->accessibleName(),
                             {{0, "keine Darstellung"},
                              {1, "Lagebeobachtungen"},
                              {2, "Höhenbeobachtungen"},
                              {3, "GPS-Raumvektoren"}},
                             *column, frame);
    store_choice(opt_beob_, &ObjectSelection::obj_beob);
    chk_test_beob_ =
        make_check_box(QStringLiteral("chk_test_beob"), QStringLiteral("mit statist&ischem Test"),
                       QStringLiteral("Beobachtungen mit statistischem Test"), frame);
    store_tick(chk_test_beob_, &ObjectSelection::obj_test_beob);
    column->addLayout(indented(chk_test_beob_));
    return frame;
}

QGroupBox* FrmObjekte::build_tests() {
    fra_test_ = make_frame(QStringLiteral("fra_test"), QStringLiteral("Statistischer &Test"), this);
    auto* column = make_column(fra_test_);
    opt_test_ = make_options(QStringLiteral("opt_test"), fra_test_->accessibleName(),
                             {{1, "EV"}, {2, "NV"}, {3, "EP / EH"}}, *column, fra_test_);
    store_choice(opt_test_, &ObjectSelection::obj_test);
    return fra_test_;
}

QGroupBox* FrmObjekte::build_signatures() {
    auto* frame = make_frame(QStringLiteral("fra_pusi"), QStringLiteral("Punkt&signaturen"), this);
    opt_pusi_ = make_options(QStringLiteral("opt_pusi"), frame->accessibleName(),
                             {{0, "keine Darstellung"}, {1, "Punktsignaturen"}},
                             *make_column(frame), frame);
    store_choice(opt_pusi_, &ObjectSelection::obj_pusi);
    return frame;
}

QGroupBox* FrmObjekte::build_values() {
    auto* frame = make_frame(QStringLiteral("fra_puwe"), QStringLiteral("&Punktwerte"), this);
    auto* column = make_column(frame);
    opt_puwe_ = make_options(QStringLiteral("opt_puwe"), frame->accessibleName(),
                             {{0, "keine Darstellung"},
                              {1, "Lageänderungen"},
                              {2, "Höhenänderungen"},
                              {3, "Lage- und Höhenänderungen"},
                              {4, "Lagerestklaffungen"},
                              {5, "Höhenrestklaffungen"},
                              {6, "Lage- und Höhenrestklaffungen"},
                              {7, "Lagefehlerellipsen"},
                              {8, "Höhenfehler"}},
                             *column, frame);
    store_choice(opt_puwe_, &ObjectSelection::obj_puwe);
    chk_epbe_ =
        make_check_box(QStringLiteral("chk_epbe"), QStringLiteral("mit &Epochenbezeichnungen"),
                       QStringLiteral("Punktwerte mit Epochenbezeichnungen"), frame);
    store_tick(chk_epbe_, &ObjectSelection::obj_epbe);
    column->addLayout(indented(chk_epbe_));
    chk_test_restkl_ =
        make_check_box(QStringLiteral("chk_test_restkl"), QStringLiteral("mit st&atistischem Test"),
                       QStringLiteral("Punktwerte mit statistischem Test"), frame);
    store_tick(chk_test_restkl_, &ObjectSelection::obj_test_restkl);
    column->addLayout(indented(chk_test_restkl_));
    return frame;
}

QGroupBox* FrmObjekte::build_labels() {
    auto* frame =
        make_frame(QStringLiteral("fra_pube"), QStringLiteral("P&unktbezeichungen"), this);
    opt_pube_ = make_options(QStringLiteral("opt_pube"), frame->accessibleName(),
                             {{0, "keine Darstellung"}, {1, "Punktbezeichnungen"}},
                             *make_column(frame), frame);
    store_choice(opt_pube_, &ObjectSelection::obj_pube);
    return frame;
}

QGroupBox* FrmObjekte::build_districts() {
    fra_nummebez_ =
        make_frame(QStringLiteral("fra_nummebez"), QStringLiteral("&Nummerierungsbezirke"), this);
    auto* column = make_column(fra_nummebez_);
    opt_nube_ = make_options(QStringLiteral("opt_nube"), fra_nummebez_->accessibleName(),
                             {{0, "keine Darstellung"},
                              {1, "TK 25"},
                              {2, "Kilometerquadrate (KLV)"},
                              {3, "Kilometerquadrate (ALK)"},
                              {4, "TK 50"},
                              {5, "TK 100"}},
                             *column, fra_nummebez_);
    store_choice(opt_nube_, &ObjectSelection::obj_nube);
    column->addWidget(build_meridian());
    column->addWidget(build_district_labels());
    return fra_nummebez_;
}

QWidget* FrmObjekte::build_meridian() {
    auto* panel = new QWidget(fra_nummebez_);
    auto* lines = new QVBoxLayout(panel);
    lines->setContentsMargins(indent, 2, 0, 2);
    lines->setSpacing(1);
    auto* row = new QHBoxLayout;
    row->setSpacing(3);
    cmd_nubemerit_1_ = make_step_button(QStringLiteral("cmd_nubemerit_1"), QStringLiteral("−"),
                                        QStringLiteral("voriger Meridianstreifen"), panel);
    txt_nubemerit_ = make_number_edit(QStringLiteral("txt_nubemerit"),
                                      QStringLiteral("Meridianstreifen"), meridian_letters, panel);
    txt_nubemerit_->setMaxLength(meridian_letters);
    txt_nubemerit_->installEventFilter(this);
    select_timer_ = new QTimer(this);
    select_timer_->setSingleShot(true);
    connect(select_timer_, &QTimer::timeout, txt_nubemerit_, &QLineEdit::selectAll);
    lbl_nube_merizon_ = make_buddy(QStringLiteral("lbl_nube_merizon"),
                                   QStringLiteral("&Meridianstreifen:"), txt_nubemerit_, panel);
    cmd_nubemerit_2_ = make_step_button(QStringLiteral("cmd_nubemerit_2"), QStringLiteral("+"),
                                        QStringLiteral("nächster Meridianstreifen"), panel);
    lines->addWidget(lbl_nube_merizon_);
    for (QWidget* control :
         std::initializer_list<QWidget*>{cmd_nubemerit_1_, txt_nubemerit_, cmd_nubemerit_2_}) {
        row->addWidget(control);
    }
    row->addStretch();
    lines->addLayout(row);
    connect(cmd_nubemerit_1_, &QToolButton::clicked, this, [this] { step(-1); });
    connect(cmd_nubemerit_2_, &QToolButton::clicked, this, [this] { step(1); });
    connect(txt_nubemerit_, &QLineEdit::editingFinished, this, &FrmObjekte::take_typed_meridian);
    return panel;
}

QWidget* FrmObjekte::build_district_labels() {
    // Options with another parent than those of the districts: the arrow keys then stay among them.
    auto* panel = new QWidget(fra_nummebez_);
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 4, 0, 0);
    column->setSpacing(2);
    lbl_nbez_ = make_label(QStringLiteral("lbl_nbez"), QStringLiteral("&Bezeichnungen:"), panel);
    column->addWidget(lbl_nbez_);
    opt_nbez_ = make_options(QStringLiteral("opt_nbez"), plain_caption(lbl_nbez_->text()),
                             {{0, "keine"}, {1, "alle"}, {2, "nur am Rand"}}, *column, panel);
    store_choice(opt_nbez_, &ObjectSelection::obj_nbez);
    return panel;
}

QGroupBox* FrmObjekte::build_system() {
    fra_bezug_ = make_frame(QStringLiteral("fra_bezug"), QStringLiteral("Be&zugssystem"), this);
    auto* column = make_column(fra_bezug_);
    opt_bezu_ = make_options(
        QStringLiteral("opt_bezu"), fra_bezug_->accessibleName(),
        {{0, "lokales System"}, {1, "DHDN"}, {2, "ETRS 89"}, {3, "anderes Bezugssystem:"}}, *column,
        fra_bezug_);
    cbo_bezu_elli_ = make_list(QStringLiteral("cbo_bezu_elli"), QStringLiteral("Ellipsoid"),
                               ellipsoid_names(), fra_bezug_);
    lbl_bezu_elli_ = make_buddy(QStringLiteral("lbl_bezu_elli"), QStringLiteral("E&llipsoid:"),
                                cbo_bezu_elli_, fra_bezug_);
    cbo_bezu_abbi_ = make_list(QStringLiteral("cbo_bezu_abbi"), QStringLiteral("Abbildung"),
                               mapping_names(), fra_bezug_);
    lbl_bezu_abbi_ = make_buddy(QStringLiteral("lbl_bezu_abbi"), QStringLiteral("Abbildun&g:"),
                                cbo_bezu_abbi_, fra_bezug_);
    // Captions stand above their boxes: side by side the dialog would not fit on small screens.
    auto* boxes = new QVBoxLayout;
    boxes->setContentsMargins(indent, 0, 0, 0);
    boxes->setSpacing(1);
    for (QWidget* control : std::initializer_list<QWidget*>{lbl_bezu_elli_, cbo_bezu_elli_,
                                                            lbl_bezu_abbi_, cbo_bezu_abbi_}) {
        boxes->addWidget(control);
    }
    column->addLayout(boxes);
    const auto choose = [this](const std::function<void()>& choice) {
        if (!filling_) {
            choice();
            synchronise();
        }
    };
    connect(opt_bezu_, &QButtonGroup::idClicked, this, [this, choose](int code) {
        choose(
            [this, code] { choose_reference_system(session_, static_cast<std::int16_t>(code)); });
    });
    connect(cbo_bezu_elli_, &QComboBox::currentIndexChanged, this, [this, choose](int index) {
        choose([this, index] { choose_ellipsoid(session_, index + 1); });
    });
    connect(cbo_bezu_abbi_, &QComboBox::currentIndexChanged, this, [this, choose](int index) {
        choose([this, index] { choose_mapping(session_, index + 1); });
    });
    return fra_bezug_;
}

QGroupBox* FrmObjekte::build_boundaries() {
    fra_verwaltung_ =
        make_frame(QStringLiteral("fra_verwaltung"), QStringLiteral("&Verwaltungsgrenzen"), this);
    opt_verw_ = make_options(QStringLiteral("opt_verw"), fra_verwaltung_->accessibleName(),
                             {{0, "keine Darstellung"},
                              {1, "Länder"},
                              {2, "Länder + Regierungsbezirke"},
                              {3, "wie vor + Kreise + kreisfr. Städte"},
                              {4, "wie vor + Gemeinden"},
                              {5, "wie vor + sonstige (1)"},
                              {6, "wie vor + sonstige (2)"},
                              {7, "wie vor + sonstige (3)"}},
                             *make_column(fra_verwaltung_), fra_verwaltung_);
    store_choice(opt_verw_, &ObjectSelection::obj_verw);
    return fra_verwaltung_;
}

void FrmObjekte::store_choice(QButtonGroup* options, std::int16_t ObjectSelection::*variable) {
    // idClicked comes with the arrow keys as well.
    connect(options, &QButtonGroup::idClicked, this, [this, variable](int code) {
        if (!filling_) {
            session_.part.obj.*variable = static_cast<std::int16_t>(code);
            synchronise();
        }
    });
}

void FrmObjekte::store_tick(QCheckBox* box, std::int16_t ObjectSelection::*variable) {
    connect(box, &QCheckBox::toggled, this, [this, variable](bool ticked) {
        if (!filling_) {
            session_.part.obj.*variable = ticked ? table_true : table_false;
            synchronise();
        }
    });
}

void FrmObjekte::synchronise() {
    settle_test(session_.part.obj);
    const ObjectSelection& obj = session_.part.obj;
    const SelectionControls controls = selection_controls(obj, session_.part.extents.roh_rw_min);
    filling_ = true;
    check_option(*opt_beob_, obj.obj_beob);
    check_option(*opt_pusi_, obj.obj_pusi);
    check_option(*opt_puwe_, obj.obj_puwe);
    check_option(*opt_pube_, obj.obj_pube);
    chk_epbe_->setChecked(obj.obj_epbe != table_false);
    chk_epbe_->setEnabled(controls.chk_epbe);
    synchronise_tests(controls);
    synchronise_system(controls);
    synchronise_districts(controls);
    fra_verwaltung_->setEnabled(controls.fra_verwaltung);
    check_option(*opt_verw_, controls.opt_verw_checked);
    filling_ = false;
}

void FrmObjekte::synchronise_tests(const SelectionControls& controls) {
    const ObjectSelection& obj = session_.part.obj;
    chk_test_restkl_->setChecked(obj.obj_test_restkl != table_false);
    chk_test_restkl_->setEnabled(controls.chk_test_restkl);
    chk_test_beob_->setChecked(obj.obj_test_beob != table_false);
    chk_test_beob_->setEnabled(controls.chk_test_beob);
    fra_test_->setEnabled(controls.fra_test);
    check_option(*opt_test_, obj.obj_test);
    for (int code = 1; code <= static_cast<int>(test_values); ++code) {
        opt_test_->button(code)->setEnabled(controls.opt_test[static_cast<std::size_t>(code)]);
    }
    QAbstractButton* const third = opt_test_->button(static_cast<int>(test_values));
    third->setText(QString::fromUtf8(controls.opt_test_3_caption.data(),
                                     static_cast<qsizetype>(controls.opt_test_3_caption.size())));
    third->setAccessibleName(third->text());
}

void FrmObjekte::synchronise_system(const SelectionControls& controls) {
    fra_bezug_->setEnabled(controls.fra_bezug);
    check_option(*opt_bezu_, controls.opt_bezu_checked);
    for (int code = 0; code < static_cast<int>(reference_systems); ++code) {
        opt_bezu_->button(code)->setEnabled(controls.opt_bezu[static_cast<std::size_t>(code)]);
    }
    cbo_bezu_elli_->setCurrentIndex(controls.cbo_bezu_elli - 1);
    cbo_bezu_abbi_->setCurrentIndex(controls.cbo_bezu_abbi - 1);
    for (QWidget* control : std::initializer_list<QWidget*>{lbl_bezu_elli_, cbo_bezu_elli_,
                                                            lbl_bezu_abbi_, cbo_bezu_abbi_}) {
        control->setEnabled(controls.cbo_bezu);
    }
}

void FrmObjekte::synchronise_districts(const SelectionControls& controls) {
    fra_nummebez_->setEnabled(controls.fra_nummebez);
    check_option(*opt_nube_, controls.opt_nube_checked);
    check_option(*opt_nbez_, session_.part.obj.obj_nbez);
    if (QAbstractButton* const chosen = opt_nbez_->checkedButton()) {
        lbl_nbez_->setBuddy(chosen);  // the shortcut of a label clicks its option
    }
    lbl_nbez_->setEnabled(controls.opt_nbez);
    for (QAbstractButton* button : opt_nbez_->buttons()) {
        button->setEnabled(controls.opt_nbez);
    }
    for (QWidget* control : std::initializer_list<QWidget*>{lbl_nube_merizon_, cmd_nubemerit_1_,
                                                            txt_nubemerit_, cmd_nubemerit_2_}) {
        control->setEnabled(controls.nubemerit);
    }
    txt_nubemerit_->setText(QString::fromStdString(controls.txt_nubemerit));
    txt_nubemerit_->setModified(false);
}

void FrmObjekte::take_typed_meridian() {
    if (filling_ || !txt_nubemerit_->isModified()) {
        return;
    }
    type_meridian(session_.part.obj, txt_nubemerit_->text().toStdString());
    synchronise();
}

void FrmObjekte::step(int by) {
    take_typed_meridian();
    step_meridian(session_.part.obj, by);
    synchronise();
}

/// The arrow keys of the meridian's text: true if the key was one of them.
bool FrmObjekte::meridian_key(int key) {
    switch (key) {
        case Qt::Key_Left:
            step(-1);
            txt_nubemerit_->selectAll();
            return true;
        case Qt::Key_Right:
            step(1);
            txt_nubemerit_->selectAll();
            return true;
        case Qt::Key_Up:
            opt_nube_->button(3)->setFocus(Qt::TabFocusReason);
            return true;
        case Qt::Key_Down:
            opt_nbez_->button(1)->setFocus(Qt::TabFocusReason);
            return true;
        default:
            return false;
    }
}

bool FrmObjekte::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txt_nubemerit_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool plain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (plain && meridian_key(key->key())) {
            return true;
        }
    }
    if (watched == txt_nubemerit_ && event->type() == QEvent::FocusIn) {
        // A click sets the cursor after this, so the text is selected once it has.
        select_timer_->start(0);
    }
    return QDialog::eventFilter(watched, event);
}

void FrmObjekte::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (parentWidget() != nullptr) {
        centre_on(*this, *parentWidget()->window());
    }
    if (QAbstractButton* const checked = opt_beob_->checkedButton()) {
        checked->setFocus(Qt::TabFocusReason);
    }
}

void FrmObjekte::give_up_edits() {
    if (!left_ && txt_nubemerit_->isModified()) {
        type_meridian(session_.part.obj, txt_nubemerit_->text().toStdString());
    }
}

void FrmObjekte::done(int result) {
    if (!left_) {
        left_ = true;
        take_typed_meridian();
        // A dialog that deletes itself on closing may be gone as soon as events are processed.
        const auto taken = taken_;
        QDialog::done(result);
        taken(result == Accepted ? SelectionLeft::by_ok : SelectionLeft::by_closing);
        return;
    }
    QDialog::done(result);
}

}  // namespace veldra
