#include "windows/forms/frmVerwopt.h"

#include <QApplication>
#include <QComboBox>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>
#include <cmath>

#include "text/fatal_error.h"
#include "windows/qt/dialog_area.h"
#include "windows/qt/dialog_controls.h"
#include "windows/qt/dialog_place.h"
#include "windows/qt/entry_box.h"

namespace veldra {

namespace {

constexpr int path_letters = 44;
constexpr int row_letters = 44;
constexpr int all = 1000;  // steps of the progress bar

QLabel* make_label(const QString& text, QWidget* box, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setBuddy(box);
    return label;
}

void make_room(QLineEdit& box, int letters) {
    box.setMinimumWidth(QFontMetrics(box.font()).averageCharWidth() * letters);
}

}  // namespace

FrmVerwopt::FrmVerwopt(QWidget* window, Session& session)
    : QDialog(window), session_(session), ui_(this, nullptr) {
    setObjectName(QStringLiteral("frmVerwopt"));
    setWindowTitle(QStringLiteral("Verwaltungsgrenzendatei, Datumsübergänge"));
    setModal(true);
    refused_timer_.setSingleShot(true);
    connect(&refused_timer_, &QTimer::timeout, this, &FrmVerwopt::return_to_refused_row);
    choose_file = [this] {
        return ask_for_existing_file(
            this,
            {QStringLiteral("dlg_grendatei"), QStringLiteral("Verwaltungsgrenzendatei wählen"),
             "Alle *.dat|*.dat|Alle Dateien (*.*)|*.*"},
            *last_folder);
    };
    build();
    show_options(boundary_options(session.settings));
}

FrmVerwopt::~FrmVerwopt() {
    left_ = true;
    hide();  // boxes lose the focus now, while what they would be read by is still there
}

void FrmVerwopt::build() {
    contents_ = new QWidget(this);
    auto* shown = new QVBoxLayout(contents_);
    shown->setContentsMargins(0, 0, 0, 0);
    auto* file = new QGroupBox(QStringLiteral("Verwaltungsgrenzendatei"), this);
    file->setObjectName(QStringLiteral("fra_grendatei"));
    auto* rows = new QVBoxLayout(file);
    rows->addWidget(build_file());
    rows->addWidget(build_systems());
    rows->addWidget(build_reduction());
    shown->addWidget(file);
    shown->addWidget(build_rows(QStringLiteral("fra_gren_tr"),
                                QStringLiteral("Datumsübergänge Verwaltungsgrenzen"),
                                QStringLiteral("txt_gren_tr_"), txt_gren_tr_));
    shown->addWidget(build_rows(QStringLiteral("fra_numb_tr"),
                                QStringLiteral("Datumsübergänge Nummerierungsbezirke"),
                                QStringLiteral("txt_numb_tr_"), txt_numb_tr_));
    auto* column = new QVBoxLayout(this);
    column->addWidget(new DialogArea(contents_, this), 1);
    column->addWidget(build_buttons());
}

QPushButton* FrmVerwopt::add_button(const QString& name, const QString& caption,
                                    const QString& spoken) {
    return make_button(name, caption, spoken, this);
}

QWidget* FrmVerwopt::build_file() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    txt_grendatei_ = new QLineEdit(widget);
    txt_grendatei_->setObjectName(QStringLiteral("txt_grendatei"));
    txt_grendatei_->setAccessibleName(QStringLiteral("Verwaltungsgrenzendatei"));
    make_room(*txt_grendatei_, path_letters);
    cmd_grendatei_ = add_button(QStringLiteral("cmd_grendatei"), QStringLiteral("&Wählen..."),
                                QStringLiteral("Verwaltungsgrenzendatei wählen"));
    row->addWidget(make_label(QStringLiteral("&Datei:"), txt_grendatei_, widget));
    row->addWidget(txt_grendatei_, 1);
    row->addWidget(cmd_grendatei_);
    new EntryBox(
        *txt_grendatei_, *txt_grendatei_, [this] { check_file(); },
        [this] {
            const QWidget* const focus = QApplication::focusWidget();
            return left_ || running_ || focus == cmd_ok_ || focus == cmd_abbrechen_ ||
                   focus == cmd_standard_ || focus == cmd_gren_opti_ || focus == cmd_grendatei_;
        });
    connect(cmd_grendatei_, &QPushButton::clicked, this, &FrmVerwopt::choose_boundary_file);
    return widget;
}

QWidget* FrmVerwopt::build_systems() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    cbo_gren_elli_ = make_list(QStringLiteral("cbo_gren_elli"), QStringLiteral("Ellipsoid"),
                               ellipsoid_names(), widget);
    cbo_gren_abbi_ = make_list(QStringLiteral("cbo_gren_abbi"), QStringLiteral("Abbildung"),
                               mapping_names(), widget);
    row->addWidget(make_label(QStringLiteral("&Ellipsoid:"), cbo_gren_elli_, widget));
    row->addWidget(cbo_gren_elli_);
    row->addStretch();
    row->addWidget(make_label(QStringLiteral("A&bbildung:"), cbo_gren_abbi_, widget));
    row->addWidget(cbo_gren_abbi_);
    return widget;
}

QWidget* FrmVerwopt::build_reduction() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    cmd_gren_opti_ = add_button(QStringLiteral("cmd_gren_opti"), QStringLiteral("O&ptimieren"),
                                QStringLiteral("Verwaltungsgrenzendatei optimieren"));
    // Room for the longest of its captions.
    cmd_gren_opti_->setText(QStringLiteral("das dauert ..."));
    cmd_gren_opti_->setMinimumWidth(cmd_gren_opti_->sizeHint().width());
    pgb_gren_opti_ = new QProgressBar(widget);
    pgb_gren_opti_->setObjectName(QStringLiteral("pgb_gren_opti"));
    pgb_gren_opti_->setAccessibleName(QStringLiteral("Fortschritt beim Optimieren"));
    pgb_gren_opti_->setRange(0, all);
    QSizePolicy policy = pgb_gren_opti_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    pgb_gren_opti_->setSizePolicy(policy);
    pgb_gren_opti_->hide();
    row->addWidget(cmd_gren_opti_);
    row->addWidget(pgb_gren_opti_, 1);
    offer_reduction();
    connect(cmd_gren_opti_, &QPushButton::clicked, this, &FrmVerwopt::optimise);
    return widget;
}

QWidget* FrmVerwopt::build_rows(const QString& frame, const QString& title, const QString& box,
                                RowBoxes& boxes) {
    static constexpr const char* names[] = {"DHDN", "ETRS 89", "Andere"};
    auto* group = new QGroupBox(title, this);
    group->setObjectName(frame);
    auto* grid = new QGridLayout(group);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const QString name = QString::fromUtf8(names[i]);
        auto* edit = new QLineEdit(group);
        edit->setObjectName(box + QString::number(i + 1));
        edit->setAccessibleName(title + QLatin1Char(' ') + name);
        make_room(*edit, row_letters);
        const int row = static_cast<int>(i);
        grid->addWidget(make_label(name + QLatin1Char(':'), edit, group), row, 0);
        grid->addWidget(edit, row, 1);
        boxes[i] = edit;
        new EntryBox(
            *edit, *edit, [this, edit] { check_row(*edit); },
            [this] {
                const QWidget* const focus = QApplication::focusWidget();
                return left_ || running_ || focus == cmd_ok_ || focus == cmd_abbrechen_ ||
                       focus == cmd_standard_;
            });
    }
    return group;
}

QWidget* FrmVerwopt::build_buttons() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    cmd_standard_ = add_button(QStringLiteral("cmd_standard"), QStringLiteral("&Standard"),
                               QStringLiteral("Standard"));
    cmd_ok_ = add_button(QStringLiteral("cmd_ok"), QStringLiteral("&OK"), QStringLiteral("OK"));
    cmd_ok_->setDefault(true);
    cmd_abbrechen_ = add_button(QStringLiteral("cmd_abbrechen"), QStringLiteral("&Abbrechen"),
                                QStringLiteral("Abbrechen"));
    row->addWidget(cmd_standard_);
    row->addStretch();
    row->addWidget(cmd_ok_);
    row->addWidget(cmd_abbrechen_);
    connect(cmd_standard_, &QPushButton::clicked, this,
            [this] { show_options(standard_boundary_options()); });
    connect(cmd_ok_, &QPushButton::clicked, this, &FrmVerwopt::accept);
    connect(cmd_abbrechen_, &QPushButton::clicked, this, &FrmVerwopt::reject);
    return widget;
}

void FrmVerwopt::show_options(const BoundaryOptions& options) {
    txt_grendatei_->setText(QString::fromStdString(options.datei));
    const auto choose = [](QComboBox& box, std::int32_t number) {
        box.setCurrentIndex(number >= 1 && number <= box.count() ? number - 1 : -1);
    };
    choose(*cbo_gren_elli_, options.ellipsoid);
    choose(*cbo_gren_abbi_, options.abbildung);
    for (std::size_t i = 0; i < datum_row_count; ++i) {
        txt_gren_tr_[i]->setText(QString::fromStdString(options.gren_tr[i]));
        txt_numb_tr_[i]->setText(QString::fromStdString(options.numb_tr[i]));
    }
    offer_reduction();
}

BoundaryOptions FrmVerwopt::shown_options() const {
    BoundaryOptions options;
    options.datei = typed_file();
    // Without a choice the value of a strange profile stays.
    const auto chosen = [](const QComboBox& box, std::int32_t otherwise) {
        return box.currentIndex() < 0 ? otherwise : box.currentIndex() + 1;
    };
    options.ellipsoid = chosen(*cbo_gren_elli_, session_.settings.verw_elli);
    options.abbildung = chosen(*cbo_gren_abbi_, session_.settings.verw_abbi);
    for (std::size_t i = 0; i < datum_row_count; ++i) {
        options.gren_tr[i] = txt_gren_tr_[i]->text().toStdString();
        options.numb_tr[i] = txt_numb_tr_[i]->text().toStdString();
    }
    return options;
}

std::string FrmVerwopt::typed_file() const {
    return txt_grendatei_->text().trimmed().toStdString();
}

void FrmVerwopt::choose_boundary_file() {
    const QString path = choose_file();
    if (!path.isEmpty()) {
        txt_grendatei_->setText(path);
        offer_reduction();
    }
}

void FrmVerwopt::check_file() {
    if (find_boundary_file(session_, typed_file()).empty()) {
        report_missing_file();
    } else {
        offer_reduction();
    }
}

void FrmVerwopt::report_missing_file() {
    ui_.message_box(MessageStyle::exclamation, "Verwaltungsgrenzendatei",
                    "Datei konnte nicht gefunden werden.\n"
                    "Überprüfen Sie, ob der Dateiname richtig ist.");
}

void FrmVerwopt::check_row(QLineEdit& box) {
    const auto row = parse_datum_row(box.text().toStdString());
    if (row) {
        box.setText(QString::fromStdString(datum_row_text(*row)));
    } else {
        refuse_row(box);
    }
}

void FrmVerwopt::refuse_row(QLineEdit& box) {
    ui_.message_box(MessageStyle::exclamation, "Transformationsparameter vorgeben",
                    "Bitte überprüfen Sie die eingebenen Parameter.");
    refused_row_ = &box;
    refused_timer_.start(0);  // the focus is still on its way to where the user sent it
}

void FrmVerwopt::return_to_refused_row() {
    refused_row_->setFocus();
    refused_row_->selectAll();
}

bool FrmVerwopt::check_all_rows() {
    for (const RowBoxes* boxes : {&txt_gren_tr_, &txt_numb_tr_}) {
        for (QLineEdit* box : *boxes) {
            if (!parse_datum_row(box->text().toStdString())) {
                refuse_row(*box);
                return false;
            }
        }
    }
    return true;
}

void FrmVerwopt::offer_reduction() {
    cmd_gren_opti_->setText(QStringLiteral("O&ptimieren"));
    cmd_gren_opti_->setEnabled(true);
}

void FrmVerwopt::lock(bool running) {
    running_ = running;
    give_up_ = false;
    pgb_gren_opti_->setValue(0);
    pgb_gren_opti_->setVisible(running);
    for (auto* frame : contents_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!frame->isAncestorOf(pgb_gren_opti_)) {
            frame->setEnabled(!running);
        }
    }
    for (QWidget* widget :
         std::initializer_list<QWidget*>{txt_grendatei_, cmd_grendatei_, cbo_gren_elli_,
                                         cbo_gren_abbi_, cmd_standard_, cmd_ok_}) {
        widget->setEnabled(!running);
    }
}

bool FrmVerwopt::watch(double share) {
    const QPointer<FrmVerwopt> self(this);
    pgb_gren_opti_->setValue(static_cast<int>(std::lround(share * all)));
    QApplication::processEvents();
    return self && !give_up_;
}

void FrmVerwopt::optimise() {
    if (running_) {
        return;
    }
    std::string datei = typed_file();
    lock(true);
    cmd_gren_opti_->setText(QStringLiteral("das dauert ..."));
    cmd_gren_opti_->setEnabled(false);
    cmd_abbrechen_->setFocus();
    // Among the events that are served may be the end of the program, and so of this dialog.
    const QPointer<FrmVerwopt> self(this);
    ReductionEnd end = ReductionEnd::cancelled;
    std::string failure;
    try {
        end = optimise_boundaries(session_, datei,
                                  [self](double share) { return self && self->watch(share); });
    } catch (const FatalError& error) {
        failure = error.what();
    }
    if (!self) {
        return;
    }
    lock(false);
    if (end == ReductionEnd::done) {
        txt_grendatei_->setText(QString::fromStdString(datei));
        cmd_gren_opti_->setText(QStringLiteral("fertig"));
        cmd_ok_->setFocus();
        return;
    }
    offer_reduction();
    cmd_gren_opti_->setFocus();
    if (!failure.empty()) {
        ui_.message_box(MessageStyle::critical, "Verwaltungsgrenzendatei", failure);
    } else if (end == ReductionEnd::no_file) {
        report_missing_file();
    }
}

void FrmVerwopt::accept() {
    if (running_ || !check_all_rows()) {
        return;
    }
    left_ = true;
    if (store_boundary_options(shown_options(), session_.settings)) {
        QDialog::accept();
    }
}

void FrmVerwopt::reject() {
    if (running_) {
        give_up_ = true;
        return;
    }
    left_ = true;
    QDialog::reject();
}

void FrmVerwopt::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (parentWidget() != nullptr) {
        centre_on(*this, *parentWidget()->window());
    }
    cmd_ok_->setFocus();
}

}  // namespace veldra
