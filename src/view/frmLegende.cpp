#include "view/frmLegende.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMetaObject>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "graphikdatei/codepage.h"
#include "platform/qt/entry_box.h"
#include "platform/qt/qt_font.h"
#include "plot/application_printer.h"
#include "shell/frmLogo.h"

namespace veldra {

namespace {

constexpr int text_letters = 60;
constexpr int size_letters = 7;

std::string bytes_of(const QString& text) {
    return from_utf8(text.toStdString());
}

QLineEdit* make_box(const QString& name, const QString& accessible_name, int letters,
                    QWidget* parent) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setAccessibleName(accessible_name);
    box->setMinimumWidth(QFontMetrics(box->font()).averageCharWidth() * letters);
    return box;
}

}  // namespace

FrmLegende::FrmLegende(QWidget* window, Session& session, Printer* printer)
    : QDialog(window), choose_font(toolkit_face_chooser()), session_(session), printer_(printer) {
    setObjectName(QStringLiteral("frmLegende"));
    setWindowTitle(QStringLiteral("Legende"));
    setModal(true);
    CheckPrinter(session_, printer_);
    build();
    activate();
}

FrmLegende::~FrmLegende() {
    hide();  // boxes lose the focus now, while what they would be read by is still there
}

void FrmLegende::build() {
    auto* column = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    for (std::size_t number = 1; number <= legend_line_count; ++number) {
        add_line(*grid, number);
    }
    grid->setColumnStretch(0, 1);
    column->addLayout(grid);
    auto* row = new QHBoxLayout;
    row->addWidget(build_position());
    row->addStretch();
    row->addWidget(build_buttons(), 0, Qt::AlignBottom);
    column->addLayout(row);
}

void FrmLegende::add_line(QGridLayout& grid, std::size_t number) {
    const QString suffix = QStringLiteral("_%1").arg(number);
    const QString name = QStringLiteral("Zeile %1").arg(number);
    Line& made = line(number);
    made.txt_legende = make_box(QStringLiteral("txt_legende") + suffix,
                                name + QStringLiteral(": Text"), text_letters, this);
    auto* lbl_text =
        new QLabel(QStringLiteral("Zeile &%1 (%2):")
                       .arg(QString::number(number),
                            number == 1 ? QStringLiteral("für ganze Graphikdatei")
                                        : QStringLiteral("nur fürs aktuelle Netzteil")),
                   this);
    lbl_text->setObjectName(QStringLiteral("lbl_text") + suffix);
    lbl_text->setBuddy(made.txt_legende);
    const int row = static_cast<int>(number) * 2;
    grid.addWidget(lbl_text, row, 0, 1, 2);
    grid.addWidget(made.txt_legende, row + 1, 0);
    if (number > 1) {
        made.chk_standard = new QCheckBox(QStringLiteral("Standardtext"), this);
        made.chk_standard->setObjectName(QStringLiteral("chk_standard") + suffix);
        made.chk_standard->setAccessibleName(name + QStringLiteral(": Standardtext"));
        grid.addWidget(made.chk_standard, row + 1, 1);
        connect(made.chk_standard, &QCheckBox::toggled, this,
                [this, number](bool standard) { follow_standard(number, standard); });
    }
    auto* cmd_schrift = new QPushButton(QStringLiteral("Schrift"), this);
    cmd_schrift->setObjectName(QStringLiteral("cmd_schrift") + suffix);
    cmd_schrift->setAccessibleName(name + QStringLiteral(": Schrift"));
    cmd_schrift->setAutoDefault(false);
    made.txt_schrift = make_box(QStringLiteral("txt_schrift") + suffix,
                                name + QStringLiteral(": Schrifthöhe in mm"), size_letters, this);
    made.txt_schrift->setAlignment(Qt::AlignRight);
    made.txt_schrift->setMaximumWidth(made.txt_schrift->minimumWidth());
    auto* lbl_einheit = new QLabel(QStringLiteral("mm (genähert)"), this);
    lbl_einheit->setObjectName(QStringLiteral("lbl_einheit") + suffix);
    grid.addWidget(cmd_schrift, row + 1, 2);
    grid.addWidget(made.txt_schrift, row + 1, 3);
    grid.addWidget(lbl_einheit, row + 1, 4);
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
        auto* button = new QRadioButton(caption, group);
        button->setObjectName(QStringLiteral("opt_posi_%1").arg(i + 1));
        button->setAccessibleName(QStringLiteral("Position ") +
                                  QString(caption).remove(QLatin1Char('&')));
        grid->addWidget(button, i % 2, i / 2);
        opt_posi_[static_cast<std::size_t>(i)] = button;
    }
    return group;
}

QWidget* FrmLegende::build_buttons() {
    cmd_ok_ = new QPushButton(QStringLiteral("&OK"), this);
    cmd_ok_->setObjectName(QStringLiteral("cmd_ok"));
    cmd_ok_->setAccessibleName(QStringLiteral("OK"));
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
        set_legend_size(session_, printer_, number, typed.txt_schrift->text().toStdString());
        show_size(number);
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

void FrmLegende::store() {
    std::array<LegendEntry, legend_line_count> entries;
    for (std::size_t number = 1; number <= legend_line_count; ++number) {
        take_size(number);
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
            // After the box has put its cursor where the mouse is.
            QMetaObject::invokeMethod(box, &QLineEdit::selectAll, Qt::QueuedConnection);
        }
    }
    return QDialog::eventFilter(watched, event);
}

void FrmLegende::done(int result) {
    store();
    QDialog::done(result);
}

void FrmLegende::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (parentWidget() != nullptr) {
        centre_on(*this, *parentWidget()->window());
    }
    line(1).txt_legende->setFocus();
}

}  // namespace veldra
