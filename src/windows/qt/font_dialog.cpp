#include "windows/qt/font_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "dialogs/display_options.h"
#include "model/tables.h"
#include "text/codepage.h"
#include "text/numbers.h"
#include "windows/qt/dialog_area.h"
#include "windows/qt/dialog_controls.h"
#include "windows/qt/dialog_place.h"
#include "windows/qt/qt_font.h"
#include "windows/qt/qt_user_interface.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

namespace {

constexpr double smallest_points = 1;
constexpr double largest_points = 1638;  // beyond it the toolkit's own limits begin
constexpr double largest_sample = 48;    // points
constexpr int shown_rows = 7;
constexpr int list_letters = 26;
constexpr int sample_lines = 4;

constexpr int italic_row = 1;
constexpr int bold_row = 2;

QListWidget* make_rows(const QString& name, const QString& accessible_name, int letters,
                       QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setObjectName(name);
    list->setAccessibleName(accessible_name);
    const QFontMetrics metrics(list->font());
    list->setMinimumWidth(metrics.averageCharWidth() * letters);
    list->setMinimumHeight(metrics.lineSpacing() * shown_rows);
    return list;
}

/// A face is kept in Windows-1252.
bool can_be_kept(const QString& face) {
    return to_qstring(from_utf8(face.toStdString())) == face;
}

/// A face that the system lacks, and what is drawn in its place.
QString lacking(const QString& face) {
    const QString stand_in = QFontInfo(QFont(face)).family();
    return QStringLiteral("%1 (fehlt, ersetzt durch %2)")
        .arg(face.isEmpty() ? QStringLiteral("ohne Namen") : face, stand_in);
}

}  // namespace

FontDialog::FontDialog(QWidget* parent, const QString& name, const FontChoice& choice,
                       const Parts& parts)
    : QDialog(parent), before_(choice), colour_(choice.colour) {
    setObjectName(name);
    setWindowTitle(QStringLiteral("Schrift"));
    setModal(true);
    build(parts);
    fill_faces();
    lst_schriftstil_->setCurrentRow((choice.font.bold != table_false ? bold_row : 0) +
                                    (choice.font.italic != table_false ? italic_row : 0));
    chk_unterstrichen_->setChecked(choice.font.underline != table_false);
    connect(lst_schriftart_, &QListWidget::currentRowChanged, this, &FontDialog::show_sample);
    connect(lst_schriftstil_, &QListWidget::currentRowChanged, this, &FontDialog::show_sample);
    connect(chk_unterstrichen_, &QCheckBox::toggled, this, &FontDialog::show_sample);
    show_sample();
}

void FontDialog::build(const Parts& parts) {
    auto* contents = new QWidget(this);
    auto* shown = new QVBoxLayout(contents);
    shown->setContentsMargins(0, 0, 0, 0);
    auto* grid = new QGridLayout;
    build_lists(*grid);
    if (parts.size) {
        build_size(*grid);
    }
    shown->addLayout(grid, 1);
    auto* row = new QHBoxLayout;
    chk_unterstrichen_ =
        make_check_box(QStringLiteral("chk_unterstrichen"), QStringLiteral("&unterstrichen"),
                       QStringLiteral("unterstrichen"), this);
    row->addWidget(chk_unterstrichen_);
    row->addStretch();
    if (parts.colour) {
        build_colour(*row);
    }
    shown->addLayout(row);
    shown->addWidget(build_sample());
    auto* column = new QVBoxLayout(this);
    column->addWidget(new DialogArea(contents, this), 1);
    const EndButtons buttons = add_end_buttons(*column, this);
    connect(buttons.cmd_ok, &QPushButton::clicked, this, &FontDialog::accept);
    connect(buttons.cmd_abbrechen, &QPushButton::clicked, this, &QDialog::reject);
}

void FontDialog::build_lists(QGridLayout& grid) {
    lst_schriftart_ = make_rows(QStringLiteral("lst_schriftart"), QStringLiteral("Schriftart"),
                                list_letters, this);
    lst_schriftstil_ = make_rows(QStringLiteral("lst_schriftstil"), QStringLiteral("Schriftstil"),
                                 list_letters / 2, this);
    // In the order of their rows.
    lst_schriftstil_->addItems({QStringLiteral("normal"), QStringLiteral("kursiv"),
                                QStringLiteral("fett"), QStringLiteral("fett kursiv")});
    grid.addWidget(make_buddy(QStringLiteral("lbl_schriftart"), QStringLiteral("&Schriftart:"),
                              lst_schriftart_, this),
                   0, 0);
    grid.addWidget(lst_schriftart_, 1, 0);
    grid.addWidget(make_buddy(QStringLiteral("lbl_schriftstil"), QStringLiteral("Schriftst&il:"),
                              lst_schriftstil_, this),
                   0, 1);
    grid.addWidget(lst_schriftstil_, 1, 1);
    grid.setColumnStretch(0, 2);
    grid.setColumnStretch(1, 1);
}

void FontDialog::build_size(QGridLayout& grid) {
    cbo_groesse_ = new QComboBox(this);
    cbo_groesse_->setObjectName(QStringLiteral("cbo_groesse"));
    cbo_groesse_->setAccessibleName(QStringLiteral("Größe in Punkt"));
    cbo_groesse_->setEditable(true);
    cbo_groesse_->setInsertPolicy(QComboBox::NoInsert);
    cbo_groesse_->setCompleter(nullptr);
    for (const int points : QFontDatabase::standardSizes()) {
        cbo_groesse_->addItem(QString::number(points));
    }
    cbo_groesse_->lineEdit()->setAccessibleName(cbo_groesse_->accessibleName());
    size_before_ = QString::fromStdString(number_text(before_.font.points, "####0.##"));
    cbo_groesse_->setCurrentIndex(cbo_groesse_->findText(size_before_));
    cbo_groesse_->setEditText(size_before_);
    grid.addWidget(make_buddy(QStringLiteral("lbl_groesse"), QStringLiteral("&Größe in Punkt:"),
                              cbo_groesse_, this),
                   0, 2);
    grid.addWidget(cbo_groesse_, 1, 2, Qt::AlignTop);
    connect(cbo_groesse_, &QComboBox::editTextChanged, this, &FontDialog::show_sample);
}

void FontDialog::build_colour(QBoxLayout& row) {
    cmd_farbe_ = make_button(QStringLiteral("cmd_farbe"), QStringLiteral("Far&be..."),
                             QStringLiteral("Farbe der Schrift"), this);
    connect(cmd_farbe_, &QPushButton::clicked, this, [this] {
        colour_ =
            choose_colour(this, QStringLiteral("dlg_schriftfarbe"), colour_).value_or(colour_);
        show_colour();
        show_sample();
    });
    row.addWidget(cmd_farbe_);
    show_colour();
}

QLabel* FontDialog::build_sample() {
    lbl_muster_ =
        make_label(QStringLiteral("lbl_muster"), QStringLiteral("AaBbÄäß 1234567890"), this);
    lbl_muster_->setFrameShape(QFrame::StyledPanel);
    lbl_muster_->setAlignment(Qt::AlignCenter);
    lbl_muster_->setAutoFillBackground(true);
    // As large as it is, whatever letters it shows.
    lbl_muster_->setFixedHeight(fontMetrics().lineSpacing() * sample_lines);
    lbl_muster_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    return lbl_muster_;
}

void FontDialog::fill_faces() {
    const QString set = to_qstring(before_.font.face);
    row_before_ = -1;
    for (const QString& face : QFontDatabase::families()) {
        if (!QFontDatabase::isPrivateFamily(face) && can_be_kept(face)) {
            if (face.compare(set, Qt::CaseInsensitive) == 0) {
                row_before_ = lst_schriftart_->count();
            }
            lst_schriftart_->addItem(face);
        }
    }
    if (row_before_ < 0) {
        lst_schriftart_->insertItem(0, lacking(set));
        row_before_ = 0;
    }
    lst_schriftart_->setCurrentRow(row_before_);
}

std::string FontDialog::chosen_face() const {
    const int row = lst_schriftart_->currentRow();
    return row < 0 || row == row_before_
               ? before_.font.face
               : from_utf8(lst_schriftart_->item(row)->text().toStdString());
}

std::optional<double> FontDialog::typed_points() const {
    if (cbo_groesse_ == nullptr || cbo_groesse_->currentText() == size_before_) {
        return before_.font.points;
    }
    const double points = zahl_wert(cbo_groesse_->currentText().toStdString());
    const bool is_size = points >= smallest_points && points <= largest_points;
    return is_size ? std::optional(points) : std::nullopt;
}

FontChoice FontDialog::choice() const {
    FontSpec font;
    font.face = chosen_face();
    font.points = typed_points().value_or(before_.font.points);
    const int style = std::max(0, lst_schriftstil_->currentRow());
    font.bold = table_boolean(style >= bold_row);
    font.italic = table_boolean(style % bold_row == italic_row);
    font.underline = table_boolean(chk_unterstrichen_->isChecked());
    return {font, colour_};
}

void FontDialog::show_colour() {
    QPixmap swatch(cmd_farbe_->iconSize());
    swatch.fill(to_qcolor(colour_));
    cmd_farbe_->setIcon(swatch);
}

void FontDialog::show_sample() {
    FontChoice shown = choice();
    shown.font.points = std::clamp(shown.font.points, smallest_points, largest_sample);
    lbl_muster_->setFont(text_font(shown.font));
    QPalette palette = lbl_muster_->palette();
    palette.setColor(QPalette::Window, to_qcolor(picture_background_colour()));
    palette.setColor(QPalette::WindowText, to_qcolor(colour_));
    lbl_muster_->setPalette(palette);
}

void FontDialog::accept() {
    if (typed_points()) {
        QDialog::accept();
        return;
    }
    QtUserInterface(this, nullptr)
        .message_box(MessageStyle::critical, "Schrift",
                     "Bitte geben Sie eine Schriftgröße von 1 bis 1638 Punkt an.");
    cbo_groesse_->setFocus();
    cbo_groesse_->lineEdit()->selectAll();
}

void FontDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (parentWidget() != nullptr) {
        centre_on(*this, *parentWidget()->window());
    }
    lst_schriftart_->setFocus();
    lst_schriftart_->scrollToItem(lst_schriftart_->currentItem(),
                                  QAbstractItemView::PositionAtCenter);
}

}  // namespace veldra
