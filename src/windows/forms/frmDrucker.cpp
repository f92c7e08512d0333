#include "windows/forms/frmDrucker.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QToolButton>
#include <QVBoxLayout>

#include "plot/printer.h"
#include "plot/trapped_call.h"
#include "windows/forms/tried_rows.h"
#include "windows/qt/dialog_area.h"
#include "windows/qt/dialog_controls.h"
#include "windows/qt/dialog_place.h"
#include "windows/qt/entry_box.h"
#include "windows/qt/hint_line.h"
#include "windows/qt/paper_symbol.h"
#include "windows/qt/qt_font.h"

namespace veldra {

namespace {

constexpr int size_letters = 6;
constexpr int copies_letters = 4;
constexpr int printer_letters = 24;

std::int32_t printer_count(Printer* printer) {
    std::int32_t count = 0;
    trapped([&] { count = printer == nullptr ? 0 : printer->Count(); });
    return count;
}

}  // namespace

FrmDrucker::FrmDrucker(QWidget* window, Session& session, Printer* printer)
    : QDialog(window),
      session_(session),
      printer_(printer_count(printer) > 0 ? printer : nullptr),
      options_(open_printer_options(printer_)) {
    setObjectName(QStringLiteral("frmDrucker"));
    setWindowTitle(QStringLiteral("Anwendungsdrucker auswählen"));
    setModal(true);
    build();
    fill_lists();
    show_colour_and_output();
    txt_exemplare_->setText(QString::number(session.printer.exemplare));
    if (printer_ == nullptr) {
        switch_off();
    } else {
        show_paper();
    }
    connect_controls();
}

FrmDrucker::~FrmDrucker() {
    // Boxes lose the focus now, while what they would be read by is still there. Whoever ends the
    // dialog without closing it ends the program.
    left_ = true;
    hide();
}

void FrmDrucker::build() {
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    auto* contents = new QWidget(this);
    auto* shown = new QVBoxLayout(contents);
    shown->setContentsMargins(0, 0, 0, 0);
    build_printer(*shown);
    shown->addWidget(build_paper());
    auto* row = new QHBoxLayout;
    row->addWidget(build_orientation(), 1);
    row->addWidget(build_area(), 1);
    row->addWidget(build_copies());
    shown->addLayout(row);
    column->addWidget(new DialogArea(contents, this), 1);
    lbl_hinweis_ = new HintLine(this);
    column->addWidget(lbl_hinweis_);
    const EndButtons buttons = add_end_buttons(*column, this);
    cmd_ok_ = buttons.cmd_ok;
    cmd_abbrechen_ = buttons.cmd_abbrechen;
}

void FrmDrucker::build_printer(QVBoxLayout& column) {
    cbo_drucker_ = make_list(QStringLiteral("cbo_drucker"), QStringLiteral("Drucker"), {}, this);
    // A printer may have a name of any length; the dialog does not grow with it.
    cbo_drucker_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cbo_drucker_->setMinimumContentsLength(printer_letters);
    cmd_standard_ = make_button(QStringLiteral("cmd_standard"), QStringLiteral("&Standard"),
                                QStringLiteral("Standard"), this);
    auto* row = new QHBoxLayout;
    row->addWidget(
        make_buddy(QStringLiteral("lbl_drucker"), QStringLiteral("&Drucker:"), cbo_drucker_, this));
    row->addWidget(cbo_drucker_, 1);
    row->addWidget(cmd_standard_);
    column.addLayout(row);
    chk_farbdrucker_ =
        make_check_box(QStringLiteral("chk_farbdrucker"), QStringLiteral("&Farbdrucker"),
                       QStringLiteral("Farbdrucker"), this);
    chk_druckindatei_ =
        make_check_box(QStringLiteral("chk_druckindatei"), QStringLiteral("Ausgabe &in Datei"),
                       QStringLiteral("Ausgabe in Datei"), this);
    auto* boxes = new QHBoxLayout;
    boxes->addWidget(chk_farbdrucker_);
    boxes->addWidget(chk_druckindatei_);
    boxes->addStretch();
    column.addLayout(boxes);
}

QGroupBox* FrmDrucker::build_paper() {
    auto* frame = make_frame(QStringLiteral("fra_papier"), QStringLiteral("Papier"), this);
    auto* grid = new QGridLayout(frame);
    cbo_papierformat_ =
        make_list(QStringLiteral("cbo_papierformat"), QStringLiteral("Papierformat"), {}, frame);
    cbo_papierschacht_ =
        make_list(QStringLiteral("cbo_papierschacht"), QStringLiteral("Papierschacht"), {}, frame);
    grid->addWidget(make_buddy(QStringLiteral("lbl_papierformat"), QStringLiteral("&Papierformat:"),
                               cbo_papierformat_, frame),
                    0, 0);
    grid->addWidget(cbo_papierformat_, 0, 1);
    txt_quer_ = make_number_edit(QStringLiteral("txt_quer"), QStringLiteral("Papier quer in mm"),
                                 size_letters, frame);
    txt_hoch_ = make_number_edit(QStringLiteral("txt_hoch"), QStringLiteral("Papier hoch in mm"),
                                 size_letters, frame);
    auto* size = new QHBoxLayout;
    size->addWidget(
        make_buddy(QStringLiteral("lbl_quer"), QStringLiteral("q&uer:"), txt_quer_, frame));
    size->addWidget(txt_quer_);
    size->addWidget(make_label(QStringLiteral("lbl_quer_mm"), QStringLiteral("mm"), frame));
    size->addSpacing(fontMetrics().averageCharWidth() * 2);
    size->addWidget(
        make_buddy(QStringLiteral("lbl_hoch"), QStringLiteral("ho&ch:"), txt_hoch_, frame));
    size->addWidget(txt_hoch_);
    size->addWidget(make_label(QStringLiteral("lbl_hoch_mm"), QStringLiteral("mm"), frame));
    size->addStretch();
    grid->addLayout(size, 1, 1);
    grid->addWidget(make_buddy(QStringLiteral("lbl_papierschacht"),
                               QStringLiteral("Papierschach&t:"), cbo_papierschacht_, frame),
                    2, 0);
    grid->addWidget(cbo_papierschacht_, 2, 1);
    grid->setColumnStretch(1, 1);
    return frame;
}

QGroupBox* FrmDrucker::build_orientation() {
    auto* frame =
        make_frame(QStringLiteral("fra_ausrichtung"), QStringLiteral("Druckerausrichtung"), this);
    auto* grid = new QGridLayout(frame);
    opt_ausrichtung_[1] =
        make_option(QStringLiteral("opt_ausrichtung_1"), QStringLiteral("&Hochformat"),
                    QStringLiteral("Hochformat"), frame);
    opt_ausrichtung_[2] =
        make_option(QStringLiteral("opt_ausrichtung_2"), QStringLiteral("&Querformat"),
                    QStringLiteral("Querformat"), frame);
    using Lies = PaperSymbol::Lies;
    img_hoch_an_ = new PaperSymbol(QStringLiteral("img_hoch_an"), Lies::upright, true, frame);
    img_hoch_aus_ = new PaperSymbol(QStringLiteral("img_hoch_aus"), Lies::upright, false, frame);
    img_quer_an_ = new PaperSymbol(QStringLiteral("img_quer_an"), Lies::across, true, frame);
    img_quer_aus_ = new PaperSymbol(QStringLiteral("img_quer_aus"), Lies::across, false, frame);
    const auto add = [&](int line, QRadioButton* option, PaperSymbol* on, PaperSymbol* off) {
        auto* symbols = new QHBoxLayout;
        symbols->addWidget(on);
        symbols->addWidget(off);
        grid->addWidget(option, line, 0);
        grid->addLayout(symbols, line, 1);
    };
    add(0, opt_ausrichtung_[1], img_hoch_an_, img_hoch_aus_);
    add(1, opt_ausrichtung_[2], img_quer_an_, img_quer_aus_);
    grid->setColumnStretch(0, 1);
    return frame;
}

QGroupBox* FrmDrucker::build_area() {
    auto* frame =
        make_frame(QStringLiteral("fra_netto"), QStringLiteral("Bedruckbare Fläche"), this);
    auto* row = new QHBoxLayout(frame);
    auto* column = new QVBoxLayout;
    lbl_quer_netto_ = make_label(QStringLiteral("lbl_quer_netto"), QStringLiteral("quer:"), frame);
    lbl_hoch_netto_ = make_label(QStringLiteral("lbl_hoch_netto"), QStringLiteral("hoch:"), frame);
    for (QLabel* label : {lbl_quer_netto_, lbl_hoch_netto_}) {
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);  // decimals below each other
        column->addWidget(label);
    }
    column->addStretch();
    row->addLayout(column);
    row->addStretch();
    return frame;
}

QGroupBox* FrmDrucker::build_copies() {
    auto* frame = make_frame(QStringLiteral("fra_exemplare"), QStringLiteral("&Exemplare"), this);
    auto* column = new QVBoxLayout(frame);
    auto* row = new QHBoxLayout;
    txt_exemplare_ = make_number_edit(QStringLiteral("txt_exemplare"), QStringLiteral("Exemplare"),
                                      copies_letters, frame);
    cmd_exemplare_minus_ =
        make_step_button(QStringLiteral("cmd_exemplare_minus"), QStringLiteral("−"),
                         QStringLiteral("ein Exemplar weniger"), frame);
    cmd_exemplare_plus_ =
        make_step_button(QStringLiteral("cmd_exemplare_plus"), QStringLiteral("+"),
                         QStringLiteral("ein Exemplar mehr"), frame);
    row->addWidget(txt_exemplare_);
    row->addWidget(cmd_exemplare_minus_);
    row->addWidget(cmd_exemplare_plus_);
    column->addLayout(row);
    column->addStretch();
    return frame;
}

void FrmDrucker::connect_controls() {
    const auto leaves_unread = [this] {
        return left_ || QApplication::focusWidget() == cmd_abbrechen_;
    };
    connect(cbo_drucker_, &QComboBox::activated, this, &FrmDrucker::choose_printer_at);
    connect(cmd_standard_, &QPushButton::clicked, this, &FrmDrucker::choose_standard);
    connect(chk_farbdrucker_, &QCheckBox::clicked, this, [this](bool ticked) {
        session_.printer.drucker_farbe = ticked ? print_colour : print_monochrome;
    });
    connect(chk_druckindatei_, &QCheckBox::clicked, this, [this](bool ticked) {
        session_.printer.druck_in_datei = ticked ? table_true : table_false;
    });
    connect(cbo_papierformat_, &QComboBox::activated, this,
            [this](int index) { choose_paper_at(index, 0); });
    connect(cbo_papierschacht_, &QComboBox::activated, this,
            [this](int index) { choose_bin_at(index, 0); });
    cbo_papierformat_->installEventFilter(this);
    cbo_papierschacht_->installEventFilter(this);
    for (const std::int16_t lies : {hochformat, querformat}) {
        connect(opt_ausrichtung_[static_cast<std::size_t>(lies)], &QRadioButton::clicked, this,
                [this, lies] {
                    choose_orientation(*printer_, lies);
                    show_paper();
                });
    }
    for (QLineEdit* edit : {txt_quer_, txt_hoch_}) {
        connect(edit, &QLineEdit::textEdited, this, &FrmDrucker::write_user_paper);
        new EntryBox(
            *edit, *edit, [this] { show_paper(); }, leaves_unread);
    }
    connect(txt_exemplare_, &QLineEdit::textEdited, this, [this](const QString& typed) {
        lbl_hinweis_->tell(
            are_copies(typed.toStdString()) ? QString() : QStringLiteral("Exemplare: 1 bis 100"));
    });
    new EntryBox(
        *txt_exemplare_, *txt_exemplare_,
        [this] { set_copies(copies_of_text(txt_exemplare_->text().toStdString())); },
        leaves_unread);
    txt_exemplare_->installEventFilter(this);
    connect(cmd_exemplare_plus_, &QToolButton::clicked, this,
            [this] { set_copies(session_.printer.exemplare + 1); });
    connect(cmd_exemplare_minus_, &QToolButton::clicked, this,
            [this] { set_copies(session_.printer.exemplare - 1); });
    connect(cmd_ok_, &QPushButton::clicked, this, &FrmDrucker::accept);
    connect(cmd_abbrechen_, &QPushButton::clicked, this, &FrmDrucker::reject);
}

void FrmDrucker::fill_lists() {
    if (printer_ == nullptr) {
        cbo_drucker_->addItem(QStringLiteral("(kein Drucker verfügbar)"));
        return;
    }
    trapped([this] {
        const std::int32_t count = printer_->Count();
        for (std::int32_t i = 0; i < count; ++i) {
            cbo_drucker_->addItem(QString::fromStdString(printer_->DeviceName(i)));
        }
    });
    cbo_drucker_->setCurrentIndex(options_.printer_index);
    for (const std::string_view text : paper_texts()) {
        cbo_papierformat_->addItem(utf8_qstring(text));
    }
    for (const std::string_view text : paper_bin_texts()) {
        cbo_papierschacht_->addItem(utf8_qstring(text));
    }
}

void FrmDrucker::switch_off() {
    const std::initializer_list<QWidget*> controls{
        cbo_drucker_,        chk_farbdrucker_,   chk_druckindatei_,
        cbo_papierschacht_,  cbo_papierformat_,  cmd_ok_,
        cmd_standard_,       txt_quer_,          txt_hoch_,
        opt_ausrichtung_[1], opt_ausrichtung_[2]};
    for (QWidget* widget : controls) {
        widget->setEnabled(false);
    }
    img_hoch_an_->hide();
    img_quer_an_->hide();
}

void FrmDrucker::show_paper_code(std::int16_t code) {
    const int known = static_cast<int>(paper_texts().size());
    if (cbo_papierformat_->count() > known) {
        cbo_papierformat_->removeItem(known);
    }
    const std::int32_t index = paper_index(options_, code);
    if (options_.unknown_paper) {
        cbo_papierformat_->addItem(utf8_qstring(unknown_paper_text(*options_.unknown_paper)));
    }
    cbo_papierformat_->setCurrentIndex(index);
}

void FrmDrucker::show_paper() {
    const PaperView view = view_paper(*printer_);
    show_paper_code(view.paper);
    cbo_papierschacht_->setCurrentIndex(paper_bin_index(view.bin));
    const bool lying = view.orientation == querformat;
    opt_ausrichtung_[lying ? 2 : 1]->setChecked(true);
    lead_tab_to_checked({opt_ausrichtung_[1], opt_ausrichtung_[2]});
    img_hoch_an_->setVisible(!lying);
    img_hoch_aus_->setVisible(lying);
    img_quer_an_->setVisible(lying);
    img_quer_aus_->setVisible(!lying);
    lbl_quer_netto_->setText(utf8_qstring(view.lbl_quer_netto));
    lbl_hoch_netto_->setText(utf8_qstring(view.lbl_hoch_netto));
    txt_quer_->setText(utf8_qstring(view.txt_quer));
    txt_hoch_->setText(utf8_qstring(view.txt_hoch));
    txt_quer_->setEnabled(view.user_defined);
    txt_hoch_->setEnabled(view.user_defined);
}

void FrmDrucker::show_colour_and_output() {
    chk_farbdrucker_->setChecked(session_.printer.drucker_farbe == print_colour);
    chk_druckindatei_->setChecked(session_.printer.druck_in_datei == table_true);
}

void FrmDrucker::choose_printer_at(int index) {
    cbo_drucker_->setCurrentIndex(choose_printer(session_, *printer_, options_, index));
    show_colour_and_output();
    show_paper();
    lbl_hinweis_->tell({});  // was about the printer before
}

void FrmDrucker::choose_standard() {
    cbo_drucker_->setCurrentIndex(choose_standard_printer(session_, *printer_, options_));
    show_colour_and_output();
    show_paper();
    lbl_hinweis_->tell({});  // was about the printer before
}

void FrmDrucker::choose_paper_at(int row, int by) {
    const auto refused = refused_rows(*cbo_papierformat_, row, by, [this](int tried) {
        return choose_paper(*printer_, paper_code(options_, tried));
    });
    const QString told = refusal(*cbo_papierformat_, refused);
    show_paper();
    lbl_hinweis_->tell(told);
}

void FrmDrucker::choose_bin_at(int row, int by) {
    const auto refused = refused_rows(*cbo_papierschacht_, row, by, [this](int tried) {
        return choose_paper_bin(*printer_, static_cast<std::int16_t>(tried + 1));
    });
    const QString told = refusal(*cbo_papierschacht_, refused);
    show_paper();
    lbl_hinweis_->tell(told);
}

/// The toolkit would try one row and begin anew from the old one.
bool FrmDrucker::list_key(const QObject* list, const QKeyEvent& key) {
    const bool paper = list == cbo_papierformat_;
    if ((!paper && list != cbo_papierschacht_) || printer_ == nullptr ||
        (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) {
        return false;
    }
    const ListStep step = list_step(paper ? *cbo_papierformat_ : *cbo_papierschacht_, key.key());
    if (step.by == 0) {
        return false;
    }
    if (paper) {
        choose_paper_at(step.row, step.by);
    } else {
        choose_bin_at(step.row, step.by);
    }
    return true;
}

void FrmDrucker::write_user_paper() {
    const bool taken =
        set_user_paper(*printer_, txt_quer_->text().toStdString(), txt_hoch_->text().toStdString());
    lbl_hinweis_->tell(taken ? QString()
                             : QStringLiteral("Diese Papiergröße nimmt das Gerät nicht"));
    // The box that is being typed in keeps its text until it is left.
    const PaperView view = view_paper(*printer_);
    lbl_quer_netto_->setText(utf8_qstring(view.lbl_quer_netto));
    lbl_hoch_netto_->setText(utf8_qstring(view.lbl_hoch_netto));
    if (!txt_quer_->hasFocus()) {
        txt_quer_->setText(utf8_qstring(view.txt_quer));
    }
    if (!txt_hoch_->hasFocus()) {
        txt_hoch_->setText(utf8_qstring(view.txt_hoch));
    }
}

void FrmDrucker::set_copies(int copies) {
    session_.printer.exemplare = limited_copies(copies);
    txt_exemplare_->setText(QString::number(session_.printer.exemplare));
}

void FrmDrucker::accept() {
    if (printer_ == nullptr) {
        return;
    }
    left_ = true;
    accept_printer_options(session_, *printer_, options_, txt_exemplare_->text().toStdString());
    QDialog::accept();
}

void FrmDrucker::reject() {
    left_ = true;
    if (!is_shutting_down || !is_shutting_down()) {
        reject_printer_options(session_, printer_, options_);
    }
    QDialog::reject();
}

bool FrmDrucker::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && list_key(watched, *static_cast<QKeyEvent*>(event))) {
        return true;
    }
    if (watched == txt_exemplare_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            set_copies(copies_of_text(txt_exemplare_->text().toStdString()) +
                       (key == Qt::Key_Up ? 1 : -1));
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FrmDrucker::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (parentWidget() != nullptr) {
        centre_on(*this, *parentWidget()->window());
    }
}

}  // namespace veldra
