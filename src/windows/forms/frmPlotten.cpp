#include "windows/forms/frmPlotten.h"

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
#include <QScreen>
#include <QShowEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <tuple>
#include <utility>

#include "plot/printer.h"
#include "text/text_forms.h"
#include "windows/qt/dialog_area.h"
#include "windows/qt/dialog_controls.h"
#include "windows/qt/entry_box.h"
#include "windows/qt/hint_line.h"
#include "windows/qt/paper_symbol.h"
#include "windows/qt/qt_font.h"

namespace veldra {

namespace {

constexpr int count_letters = 7;

}  // namespace

FrmPlotten::FrmPlotten(QWidget* window, Session& session, const Desk& desk)
    : QDialog(window),
      session_(session),
      desk_(desk),
      ui_(this, nullptr),
      options_(open_plot_options(session, desk)) {
    setObjectName(QStringLiteral("frmPlotten"));
    setWindowTitle(QStringLiteral("Einstellungen Plotten"));
    setModal(true);
    build();
    show_scale();
    refresh();
}

FrmPlotten::~FrmPlotten() {
    if (!left_) {
        plot_merken(session_, 3);
    }
    // Boxes lose the focus now, while what they would be read by is still there.
    left_ = true;
    hide();
}

void FrmPlotten::build() {
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    auto* contents = new QWidget(this);
    auto* shown = new QVBoxLayout(contents);
    shown->setContentsMargins(0, 0, 0, 0);
    build_part(*shown);
    build_scale(*shown);
    fra_format_ = make_frame(QStringLiteral("fra_format"), QString(), this);
    auto* format = new QVBoxLayout(fra_format_);
    auto* row = new QHBoxLayout;
    row->addWidget(build_format(), 1);
    row->addWidget(build_margin(), 1);
    format->addLayout(row);
    build_sheets(*format);
    shown->addWidget(fra_format_);
    column->addWidget(new DialogArea(contents, this), 1);
    lbl_hinweis_ = new HintLine(this);
    column->addWidget(lbl_hinweis_);
    const EndButtons buttons = add_end_buttons(*column, this);
    cmd_ok_ = buttons.cmd_ok;
    cmd_abbrechen_ = buttons.cmd_abbrechen;
    connect(cmd_ok_, &QPushButton::clicked, this, &FrmPlotten::accept);
    connect(cmd_abbrechen_, &QPushButton::clicked, this, &FrmPlotten::reject);
}

void FrmPlotten::build_part(QVBoxLayout& column) {
    auto* group = new QWidget(this);
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    opt_netzteil_ = {
        make_option(QStringLiteral("opt_netzteil_0"), QStringLiteral("Netzteil &plotten"),
                    QStringLiteral("Netzteil plotten"), group),
        make_option(QStringLiteral("opt_netzteil_1"), QStringLiteral("Netzteil &nicht plotten"),
                    QStringLiteral("Netzteil nicht plotten"), group)};
    for (const std::size_t i : {0U, 1U}) {
        row->addWidget(opt_netzteil_[i]);
        connect(opt_netzteil_[i], &QRadioButton::clicked, this, [this, i] { choose_part(i == 0); });
    }
    row->addStretch();
    column.addWidget(group);
}

void FrmPlotten::build_scale(QVBoxLayout& column) {
    fra_massstab_ = make_frame(QStringLiteral("fra_massstab"), QStringLiteral("Grundriss"), this);
    auto* row = new QHBoxLayout(fra_massstab_);
    cbo_grundriss_mass_ = new QComboBox(fra_massstab_);
    cbo_grundriss_mass_->setObjectName(QStringLiteral("cbo_grundriss_mass"));
    cbo_grundriss_mass_->setAccessibleName(QStringLiteral("Maßstab Grundriss"));
    cbo_grundriss_mass_->setEditable(true);
    cbo_grundriss_mass_->setInsertPolicy(QComboBox::NoInsert);
    cbo_grundriss_mass_->setCompleter(nullptr);
    cbo_grundriss_mass_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    cbo_grundriss_mass_->lineEdit()->setAccessibleName(QStringLiteral("Maßstab Grundriss"));
    for (const std::string_view denominator : ApplyScaleList()) {
        cbo_grundriss_mass_->addItem(utf8_qstring(denominator));
    }
    row->addWidget(make_buddy(QStringLiteral("lbl_grundriss_mass"), QStringLiteral("&Maßstab 1:"),
                              cbo_grundriss_mass_, fra_massstab_));
    row->addWidget(cbo_grundriss_mass_);
    row->addStretch();
    column.addWidget(fra_massstab_);
    const auto leaves_unread = [this] {
        const QWidget* const focus = QApplication::focusWidget();
        return left_ || focus == cmd_ok_ || focus == cmd_abbrechen_;
    };
    new EntryBox(
        *cbo_grundriss_mass_, *cbo_grundriss_mass_->lineEdit(), [this] { leave_scale(); },
        leaves_unread);
    // The toolkit reports an offered text that was typed as a choice too, at the loss of the focus.
    connect(cbo_grundriss_mass_, &QComboBox::activated, this, [this, leaves_unread] {
        if (!leaves_unread()) {
            take_scale();
        }
    });
}

QGroupBox* FrmPlotten::build_format() {
    auto* frame = make_frame(QStringLiteral("fra_ausricht"), QStringLiteral("Druckerausrichtung"),
                             fra_format_);
    auto* row = new QHBoxLayout(frame);
    auto* column = new QVBoxLayout;
    row->addLayout(column);
    opt_format_ = {make_option(QStringLiteral("opt_format_0"), QStringLiteral("&Hochformat"),
                               QStringLiteral("Hochformat"), frame),
                   make_option(QStringLiteral("opt_format_1"), QStringLiteral("&Querformat"),
                               QStringLiteral("Querformat"), frame)};
    for (const std::size_t i : {0U, 1U}) {
        column->addWidget(opt_format_[i]);
        connect(opt_format_[i], &QRadioButton::clicked, this, [this, i] {
            follow(choose_plot_format(session_, desk_, options_, static_cast<std::int16_t>(i)));
        });
    }
    column->addStretch();
    row->addStretch();
    img_hochformat_ =
        new PaperSymbol(QStringLiteral("img_hochformat"), PaperSymbol::Lies::upright, true, frame);
    img_querformat_ =
        new PaperSymbol(QStringLiteral("img_querformat"), PaperSymbol::Lies::across, true, frame);
    row->addWidget(img_hochformat_);
    row->addWidget(img_querformat_);
    return frame;
}

QGroupBox* FrmPlotten::build_margin() {
    auto* frame =
        make_frame(QStringLiteral("fra_heftrand"), QStringLiteral("Heftrand"), fra_format_);
    auto* column = new QVBoxLayout(frame);
    opt_rand_[3] = make_option(QStringLiteral("opt_rand_3"), QStringLiteral("&kein Heftrand"),
                               QStringLiteral("kein Heftrand"), frame);
    opt_rand_[1] = make_option(QStringLiteral("opt_rand_1"), QStringLiteral("o&ben"),
                               QStringLiteral("Heftrand oben"), frame);
    opt_rand_[2] = make_option(QStringLiteral("opt_rand_2"), QStringLiteral("&links"),
                               QStringLiteral("Heftrand links"), frame);
    for (const std::size_t i : {3U, 1U, 2U}) {
        column->addWidget(opt_rand_[i]);
        connect(opt_rand_[i], &QRadioButton::clicked, this, [this, i] {
            follow(choose_binding_margin(session_, desk_, options_, static_cast<std::int16_t>(i)));
        });
    }
    return frame;
}

void FrmPlotten::build_sheets(QVBoxLayout& column) {
    chk_format_blatt_ = make_check_box(QStringLiteral("chk_format_blatt"),
                                       QStringLiteral("Blatteinteilung a&utomatisch"),
                                       QStringLiteral("Blatteinteilung automatisch"), fra_format_);
    connect(chk_format_blatt_, &QCheckBox::clicked, this,
            [this](bool ticked) { follow(choose_auto_sheets(session_, options_, ticked)); });
    column.addWidget(chk_format_blatt_);
    auto* grid = new QGridLayout;
    const auto add_count = [&](int line, const QString& suffix, const QString& caption,
                               const QString& accessible_name, std::string& typed) {
        QLineEdit* edit = make_number_edit(QStringLiteral("txt_format_") + suffix, accessible_name,
                                           count_letters, fra_format_);
        QLabel* computed =
            make_label(QStringLiteral("lbl_format_auto") + suffix, QString(), fra_format_);
        computed->setAccessibleName(accessible_name + QStringLiteral(", errechnet"));
        grid->addWidget(
            make_buddy(QStringLiteral("lbl_format_") + suffix, caption, edit, fra_format_), line,
            0);
        grid->addWidget(edit, line, 1);
        grid->addWidget(computed, line, 2);
        connect(edit, &QLineEdit::textEdited, this, [this, &typed](const QString& text) {
            typed = text.toStdString();
            lbl_hinweis_->tell(is_sheet_count(typed)
                                   ? QString()
                                   : QStringLiteral("Anzahl der Blätter: 1 bis 32767"));
        });
        return std::pair(edit, computed);
    };
    std::tie(txt_format_rechts_, lbl_format_autorechts_) =
        add_count(0, QStringLiteral("rechts"), QStringLiteral("Anzahl Blätter &rechts"),
                  QStringLiteral("Anzahl Blätter rechts"), options_.blatt_rechts);
    std::tie(txt_format_hoch_, lbl_format_autohoch_) =
        add_count(1, QStringLiteral("hoch"), QStringLiteral("Anzahl Blätter ho&ch"),
                  QStringLiteral("Anzahl Blätter hoch"), options_.blatt_hoch);
    grid->setColumnStretch(3, 1);
    column.addLayout(grid);
    chk_plotternull_ = make_check_box(QStringLiteral("chk_plotternull"),
                                      QStringLiteral("Plotternullpunkt anpa&ssen"),
                                      QStringLiteral("Plotternullpunkt anpassen"), fra_format_);
    chk_plotternull_->installEventFilter(this);
    connect(chk_plotternull_, &QCheckBox::clicked, this,
            [this](bool ticked) { follow(choose_zero_point(session_, options_, ticked)); });
    column.addWidget(chk_plotternull_);
    chk_ohne_leere_ =
        make_check_box(QStringLiteral("chk_ohne_leere"), QStringLiteral("L&eere Blätter weglassen"),
                       QStringLiteral("Leere Blätter weglassen"), fra_format_);
    connect(chk_ohne_leere_, &QCheckBox::clicked, this,
            [this](bool ticked) { options_.ohne_leere = ticked; });
    column.addWidget(chk_ohne_leere_);
}

void FrmPlotten::show_scale() {
    const QString text = utf8_qstring(options_.massstab);
    cbo_grundriss_mass_->setCurrentIndex(cbo_grundriss_mass_->findText(text));
    cbo_grundriss_mass_->setEditText(text);
}

void FrmPlotten::show_counts() {
    txt_format_rechts_->setEnabled(!options_.blatt_auto);
    txt_format_hoch_->setEnabled(!options_.blatt_auto);
    txt_format_rechts_->setText(utf8_qstring(options_.blatt_rechts));
    txt_format_hoch_->setText(utf8_qstring(options_.blatt_hoch));
    lbl_format_autorechts_->setText(utf8_qstring(bracketed_count(session_.sheet.plot_auto_rechts)));
    lbl_format_autohoch_->setText(utf8_qstring(bracketed_count(session_.sheet.plot_auto_hoch)));
}

void FrmPlotten::refresh() {
    const PlotSettings& plot = session_.plot;
    for (const std::size_t i : {0U, 1U}) {
        opt_netzteil_[i]->setEnabled(options_.netzteil_offen);
        opt_format_[i]->setChecked(plot.plot_ausrichtung == static_cast<std::int16_t>(i + 1));
    }
    if (options_.netzteil_offen) {
        opt_netzteil_[options_.netzteil_plotten ? 0 : 1]->setChecked(true);
    }
    const bool known_margin = plot.plot_heftrand == 1 || plot.plot_heftrand == 2;
    opt_rand_[known_margin ? static_cast<std::size_t>(plot.plot_heftrand) : 3]->setChecked(true);
    lead_tab_to_checked({opt_netzteil_[0], opt_netzteil_[1]});
    lead_tab_to_checked({opt_format_[0], opt_format_[1]});
    lead_tab_to_checked({opt_rand_[3], opt_rand_[1], opt_rand_[2]});
    img_hochformat_->setVisible(plot.plot_ausrichtung != querformat);
    img_querformat_->setVisible(plot.plot_ausrichtung == querformat);
    chk_format_blatt_->setChecked(options_.blatt_auto);
    chk_plotternull_->setChecked(options_.null_anpassen);
    chk_ohne_leere_->setChecked(options_.ohne_leere);
    show_counts();
    fra_massstab_->setEnabled(options_.netzteil_plotten);
    fra_format_->setEnabled(options_.netzteil_plotten);
}

void FrmPlotten::choose_part(bool plotted) {
    options_.netzteil_plotten = plotted;
    refresh();
}

void FrmPlotten::refuse() {
    ui_.message_box(MessageStyle::critical, std::string(plot_scale_title),
                    std::string(plot_scale_text));
}

void FrmPlotten::follow(bool taken) {
    refresh();
    if (!taken) {
        refuse();
    }
}

void FrmPlotten::leave_scale() {
    // A scale that nobody has touched is not rounded to what its box shows.
    if (cbo_grundriss_mass_->currentText() != utf8_qstring(options_.massstab)) {
        take_scale();
    }
}

void FrmPlotten::take_scale() {
    const QString typed = cbo_grundriss_mass_->currentText();
    if (!choose_plot_scale(session_, desk_, options_, typed.toStdString())) {
        refuse();
        return;
    }
    show_scale();
    refresh();
}

void FrmPlotten::accept() {
    if (!accept_plot_options(session_, desk_, options_,
                             cbo_grundriss_mass_->currentText().toStdString())) {
        refuse();
        return;
    }
    left_ = true;
    // A dialog that deletes itself on closing may be gone as soon as events are processed.
    const auto redraw = redraw_preview;
    const auto mark = options_.netzteil_offen ? mark_part : nullptr;
    const std::int32_t part = session_.netz_aktuell;
    const bool plotted = options_.netzteil_plotten;
    QDialog::accept();
    if (redraw) {
        redraw();
    }
    if (mark) {
        mark(part, plotted);
    }
}

void FrmPlotten::reject() {
    left_ = true;
    reject_plot_options(session_, desk_);
    QDialog::reject();
}

void FrmPlotten::give_up_edits() {
    if (!left_) {
        left_ = true;
        plot_merken(session_, 3);
    }
}

bool FrmPlotten::eventFilter(QObject* watched, QEvent* event) {
    if (watched == chk_plotternull_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            chk_plotternull_->click();
            return true;  // not for the default button
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FrmPlotten::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (parentWidget() != nullptr) {
        place_beside(*this, *parentWidget()->window());
    }
}

void place_beside(QWidget& dialog, const QWidget& window) {
    dialog.adjustSize();
    const QRect room = window.screen()->availableGeometry();
    const QRect beside = window.frameGeometry();
    const QSize size = dialog.frameGeometry().size();
    const int last_left = room.right() + 1 - size.width();
    int left = beside.right() + 1;
    if (left > last_left) {
        left = beside.left() - size.width();
    }
    if (left < room.left()) {
        left = std::max(room.left(), last_left);
    }
    const int last_top = std::max(room.top(), room.bottom() + 1 - size.height());
    dialog.move(left, std::clamp(beside.top(), room.top(), last_top));
}

}  // namespace veldra
