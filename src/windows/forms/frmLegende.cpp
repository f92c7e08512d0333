#include "windows/forms/frmLegende.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "plot/application_printer.h"
#include "text/codepage.h"
#include "text/text_forms.h"
#include "windows/qt/dialog_area.h"
#include "windows/qt/dialog_controls.h"
#include "windows/qt/dialog_place.h"
#include "windows/qt/entry_box.h"
#include "windows/qt/hint_line.h"
#include "windows/qt/qt_font.h"

namespace veldra {

namespace {

constexpr int text_letters = 60;
constexpr int fewest_letters = 24;
constexpr int size_letters = 6;

std::string bytes_of(const QString& text) {
    return from_utf8(text.toStdString());
}

/// A box for a title line: wide, and narrower where the screen has no room for that.
class TitleEdit final : public QLineEdit {
 public:
    explicit TitleEdit(QWidget* parent) : QLineEdit(parent) {
        setMinimumWidth(letters(fewest_letters));
    }
    [[nodiscard]] QSize sizeHint() const override {
        return {letters(text_letters), QLineEdit::sizeHint().height()};
    }

 private:
    [[nodiscard]] int letters(int count) const {
        return QFontMetrics(font()).averageCharWidth() * count;
    }
};

QLineEdit* make_text_edit(const QString& name, const QString& accessible_name, QWidget* parent) {
    auto* edit = new TitleEdit(parent);
    keep_one_line(*edit);
    edit->setObjectName(name);
    edit->setAccessibleName(accessible_name);
    return edit;
}

}  // namespace

FrmLegende::FrmLegende(QWidget* window, Session& session, Printer* printer)
    : QDialog(window), choose_font(toolkit_face_chooser()), session_(session), printer_(printer) {
    setObjectName(QStringLiteral("frmLegende"));
    setWindowTitle(QStringLiteral("Legende"));
    setModal(true);
    select_timer_.setSingleShot(true);
    connect(&select_timer_, &QTimer::timeout, this, [this] { entered_box_->selectAll(); });
    CheckPrinter(session_, printer_);
    build();
    activate();
}

FrmLegende::~FrmLegende() {
    hide();  // boxes lose the focus now, while what they would be read by is still there
}

void FrmLegende::build() {
    auto* contents = new QWidget(this);
    auto* shown = new QVBoxLayout(contents);
    shown->setContentsMargins(0, 0, 0, 0);
    auto* grid = new QGridLayout;
    for (std::size_t number = 1; number <= legend_line_count; ++number) {
        add_line(*grid, number);
    }
    grid->setColumnStretch(0, 1);
    shown->addLayout(grid);
    shown->addWidget(build_position(), 0, Qt::AlignLeft);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new DialogArea(contents, this), 1);
    auto* row = new QHBoxLayout;
    lbl_hinweis_ = new HintLine(this);
    row->addWidget(lbl_hinweis_, 1);
    row->addWidget(build_buttons());
    column->addLayout(row);
}

void FrmLegende::add_line(QGridLayout& grid, std::size_t number) {
    const QString suffix = QStringLiteral("_%1").arg(number);
    const QString name = QStringLiteral("Zeile %1").arg(number);
    Line& made = line(number);
    made.txt_legende = make_text_edit(QStringLiteral("txt_legende") + suffix,
                                      name + QStringLiteral(": Text"), this);
    QLabel* lbl_text =
        make_buddy(QStringLiteral("lbl_text") + suffix,
                   QStringLiteral("Zeile &%1 (%2):")
                       .arg(QString::number(number),
                            number == 1 ? QStringLiteral("für ganze Graphikdatei")
                                        : QStringLiteral("nur fürs aktuelle Netzteil")),
                   made.txt_legende, this);
    const int row = static_cast<int>(number) * 2;
    grid.addWidget(lbl_text, row, 0, 1, 2);
    grid.addWidget(made.txt_legende, row + 1, 0);
    if (number > 1) {
        made.chk_standard =
            make_check_box(QStringLiteral("chk_standard") + suffix, QStringLiteral("Standardtext"),
                           name + QStringLiteral(": Standardtext"), this);
        grid.addWidget(made.chk_standard, row + 1, 1);
        connect(made.chk_standard, &QCheckBox::toggled, this,
                [this, number](bool standard) { follow_standard(number, standard); });
    }
    QPushButton* cmd_schrift =
        make_button(QStringLiteral("cmd_schrift") + suffix, QStringLiteral("Schrift"),
                    name + QStringLiteral(": Schrift"), this);
    made.txt_schrift =
        make_number_edit(QStringLiteral("txt_schrift") + suffix,
                         name + QStringLiteral(": Schrifthöhe in mm"), size_letters, this);
    grid.addWidget(cmd_schrift, row + 1, 2);
    grid.addWidget(made.txt_schrift, row + 1, 3);
    grid.addWidget(
        make_label(QStringLiteral("lbl_einheit") + suffix, QStringLiteral("mm (genähert)"), this),
        row + 1, 4);
    connect(cmd_schrift, &QPushButton::clicked, this, [this, number] { ask_for_font(number); });
    const auto never = [] { return false; };
    new EntryBox(
        *made.txt_schrift, *made.txt_schrift, [this, number] { take_size(number); }, never);
    made.txt_legende->installEventFilter(this);
}

QWidget* FrmLegende::build_position() {
    static constexpr const char* captions[] = {"&links oben", "links &unten", "&rechts oben",
                                               "rechts un&ten"};
    auto* group = new QGroupBox(QStringLiteral("Position"), this);
    group->setObjectName(QStringLiteral("fra_posi"));
    auto* grid = new QGridLayout(group);
    for (int i = 0; i < 4; ++i) {
        const QString caption = QString::fromUtf8(captions[i]);
        QRadioButton* option = make_option(
            QStringLiteral("opt_posi_%1").arg(i + 1), caption,
            QStringLiteral("Position ") + QString(caption).remove(QLatin1Char('&')), group);
        grid->addWidget(option, i % 2, i / 2);
        opt_posi_[static_cast<std::size_t>(i)] = option;
    }
    return group;
}

QWidget* FrmLegende::build_buttons() {
    cmd_ok_ =
        make_button(QStringLiteral("cmd_ok"), QStringLiteral("&OK"), QStringLiteral("OK"), this);
    cmd_ok_->setDefault(true);
    connect(cmd_ok_, &QPushButton::clicked, this, &QDialog::accept);
    return cmd_ok_;
}

void FrmLegende::activate() {
    for (std::size_t number = 1; number <= legend_line_count; ++number) {
        const LegendEntry entry = legend_entry(session_, number);
        Line& shown = line(number);
        shown.txt_legende->setText(to_qstring(entry.text));
        shown.txt_legende->setCursorPosition(0);
        if (shown.chk_standard != nullptr) {
            const QSignalBlocker quiet(shown.chk_standard);
            shown.chk_standard->setChecked(entry.standard);
            shown.txt_legende->setEnabled(!entry.standard);
        }
        show_size(number);
    }
    const std::int16_t position = session_.plot.plot_legendenlage;
    for (std::size_t i = 0; i < opt_posi_.size(); ++i) {
        opt_posi_[i]->setChecked(static_cast<std::size_t>(position) == i + 1);
    }
    lead_tab_to_checked({opt_posi_[0], opt_posi_[1], opt_posi_[2], opt_posi_[3]});
}

void FrmLegende::follow_standard(std::size_t number, bool standard) {
    Line& shown = line(number);
    if (standard) {
        shown.own_text = shown.txt_legende->text();
        shown.txt_legende->setText(to_qstring(standard_legend_text(session_, number)));
        shown.txt_legende->setCursorPosition(0);
    } else {
        constexpr std::size_t left_out = 2;
        // The standard text is where a text of one's own begins, if it is one that is printed.
        if (!shown.own_text.isEmpty() || number == left_out) {
            shown.txt_legende->setText(shown.own_text);
        }
    }
    shown.txt_legende->setEnabled(!standard);
    if (!standard) {
        shown.txt_legende->setFocus();
        shown.txt_legende->selectAll();
    }
}

void FrmLegende::show_size(std::size_t number) {
    Line& shown = line(number);
    shown.shown_size = QString::fromStdString(legend_size_text(session_, printer_, number));
    shown.txt_schrift->setText(shown.shown_size);
}

void FrmLegende::take_size(std::size_t number) {
    const Line& typed = line(number);
    if (typed.txt_schrift->text() != typed.shown_size) {
        const std::string text = typed.txt_schrift->text().toStdString();
        set_legend_size(session_, printer_, number, text);
        show_size(number);
        const std::string told = taken_otherwise(text, typed.shown_size.toStdString());
        lbl_hinweis_->tell(told.empty()
                               ? QString()
                               : QStringLiteral("Zeile %1: %2 mm")
                                     .arg(QString::number(number), QString::fromStdString(told)));
    }
}

void FrmLegende::ask_for_font(std::size_t number) {
    const bool with_size = printer_ != nullptr && session_.printer.drucker_ok == table_true;
    const auto chosen = choose_font(this, QStringLiteral("dlg_schrift"),
                                    legend_font(session_, printer_, number), with_size);
    if (chosen) {
        set_legend_font(session_, printer_, number, *chosen);
        show_size(number);
    }
}

void FrmLegende::store_texts() {
    std::array<LegendEntry, legend_line_count> entries;
    for (std::size_t number = 1; number <= legend_line_count; ++number) {
        const Line& shown = line(number);
        entries[number - 1] = {bytes_of(shown.txt_legende->text()),
                               shown.chk_standard != nullptr && shown.chk_standard->isChecked()};
    }
    std::int16_t position = 0;
    for (std::size_t i = 0; i < opt_posi_.size(); ++i) {
        if (opt_posi_[i]->isChecked()) {
            position = static_cast<std::int16_t>(i + 1);
        }
    }
    legend_accept(session_, entries, position);
}

bool FrmLegende::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        if (auto* box = qobject_cast<QLineEdit*>(watched)) {
            entered_box_ = box;
            select_timer_.start(0);  // after the box has put its cursor where the mouse is
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FrmLegende::done(int result) {
    for (std::size_t number = 1; number <= legend_line_count; ++number) {
        take_size(number);
    }
    store_texts();
    QDialog::done(result);
}

void FrmLegende::give_up_edits() {
    if (!isHidden()) {
        store_texts();
    }
}

void FrmLegende::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (parentWidget() != nullptr) {
        centre_on(*this, *parentWidget()->window());
    }
    line(1).txt_legende->setFocus();
}

}  // namespace veldra
