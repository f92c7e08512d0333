#include "windows/forms/frmDarstellungen.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

#include "plot/application_printer.h"
#include "text/text_forms.h"
#include "windows/forms/frmDarstellungen_boundaries.h"
#include "windows/forms/frmDarstellungen_observations.h"
#include "windows/forms/frmDarstellungen_points.h"
#include "windows/forms/frmDarstellungen_tests.h"
#include "windows/forms/frmDarstellungen_vectors.h"
#include "windows/qt/dialog_area.h"
#include "windows/qt/dialog_controls.h"
#include "windows/qt/dialog_place.h"
#include "windows/qt/hint_line.h"
#include "windows/qt/wrapped_tabs.h"

namespace veldra {

namespace {

constexpr int hourglass = 11;
constexpr int default_pointer = 0;
constexpr int largest_offered_factor = 10;

/// The captions of the tabs, in their order.
constexpr const char* tab_captions[] = {"Bezeichnungen, Punkte auf Bildschirm",
                                        "Bezeichnungen, Punkte im Plott",
                                        "Beobachtungen auf Bildschirm",
                                        "Beobachtungen im Plott",
                                        "Vektoren Lage",
                                        "Vektoren Höhe",
                                        "Statistischer Test",
                                        "Verwaltungsgrenzen"};

}  // namespace

FrmDarstellungen::FrmDarstellungen(QWidget* window, Session& session, TextMeasurer& measurer,
                                   Printer* printer)
    : QDialog(window),
      ui_(this, nullptr),
      context_{session, measurer, printer, toolkit_choosers(), {}, {}, {}, {}},
      plot_massstab_(display_begin(session)) {
    setObjectName(QStringLiteral("frmDarstellungen"));
    setWindowTitle(QStringLiteral("Darstellung Objekte"));
    setModal(true);
    context_.say = [this](const DisplayMessage& message) {
        ui_.message_box(MessageStyle::critical, message.title, message.text);
    };
    context_.hint = [this](const QString& hint) { lbl_hinweis_->tell(hint); };
    context_.leaves_unread = [this] {
        const QWidget* const focus = QApplication::focusWidget();
        return left_ || focus == cmd_ok_ || focus == cmd_abbrechen_;
    };
    context_.refresh_all = [this] { refresh_all(); };
    CheckPrinter(session, printer);
    build();
    refresh_all();
}

FrmDarstellungen::~FrmDarstellungen() {
    FrmDarstellungen::give_up_edits();
    // Boxes lose the focus now, while what they would be read by is still there.
    hide();
    tab_darstellungen_->disconnect(this);  // it loses its tabs one by one
}

void FrmDarstellungen::build() {
    auto* contents = new QWidget(this);
    auto* shown = new QVBoxLayout(contents);
    shown->setContentsMargins(0, 0, 0, 0);
    shown->addWidget(build_scales());
    tab_darstellungen_ = new WrappedTabs(this);
    tab_darstellungen_->setObjectName(QStringLiteral("tab_darstellungen"));
    tab_darstellungen_->setAccessibleName(QStringLiteral("Darstellung Objekte"));
    tab_darstellungen_->tabBar()->setAccessibleName(QStringLiteral("Darstellung Objekte"));
    build_pages();
    shown->addWidget(tab_darstellungen_, 1);
    auto* column = new QVBoxLayout(this);
    column->addWidget(new DialogArea(contents, this), 1);
    column->addWidget(build_buttons());
    connect(tab_darstellungen_, &QTabWidget::currentChanged, this, &FrmDarstellungen::change_tab);
}

QWidget* FrmDarstellungen::build_scales() {
    auto* widget = new QWidget(this);
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    Session& session = context_.session;
    const auto add = [&](const QString& name, const QString& text, const QString& accessible_name) {
        QComboBox* combo = make_scale_combo(name, accessible_name, widget);
        auto* label = new QLabel(text, widget);
        label->setBuddy(combo);
        row->addWidget(label);
        row->addWidget(combo);
        return combo;
    };
    QComboBox* ground =
        add(QStringLiteral("cbo_grundriss_mass"), QStringLiteral("bei &Maßstab Grundriss 1:"),
            QStringLiteral("Maßstab Grundriss"));
    for (const std::string_view text : ApplyScaleList()) {
        ground->addItem(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    }
    row->addStretch();
    QComboBox* factor = add(QStringLiteral("cbo_überhöhung"),
                            QStringLiteral("&Überhöhung der Strichstärken im Plott:"),
                            QStringLiteral("Überhöhung der Strichstärken im Plott"));
    for (int i = 1; i <= largest_offered_factor; ++i) {
        factor->addItem(QString::number(i));
    }
    cbo_grundriss_mass_ = std::make_unique<ScaleCombo>(
        *ground,
        ScaleCombo::Rules{ScaleBox::ground, ground_scale_entry,
                          [&session] { return ground_scale_text(session.plot.plot_massstab); },
                          [&session](double value) { session.plot.plot_massstab = 1 / value; }},
        context_);
    cbo_ueberhoehung_ = std::make_unique<ScaleCombo>(
        *factor,
        ScaleCombo::Rules{ScaleBox::width_factor, width_factor_entry,
                          [&session] { return std::to_string(session.settings.faktorStrich); },
                          [&session](double value) {
                              session.settings.faktorStrich = static_cast<std::int16_t>(value);
                          }},
        context_);
    return widget;
}

void FrmDarstellungen::build_pages() {
    pages_ = {new DisplayPointsPage(context_, SampleMedium::screen, this),
              new DisplayPointsPage(context_, SampleMedium::plot, this),
              new DisplayObservationsPage(context_, SampleMedium::screen, this),
              new DisplayObservationsPage(context_, SampleMedium::plot, this),
              new DisplayVectorsPage(context_, DisplayTab::vectors_position, this),
              new DisplayVectorsPage(context_, DisplayTab::vectors_height, this),
              new DisplayTestsPage(context_, this),
              new DisplayBoundariesPage(context_, this)};
    for (std::size_t i = 0; i < pages_.size(); ++i) {
        tab_darstellungen_->addTab(pages_[i], QString::fromUtf8(tab_captions[i]));
    }
}

QWidget* FrmDarstellungen::build_buttons() {
    auto* widget = new QWidget(this);
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    lbl_hinweis_ = new HintLine(widget);
    const EndButtons buttons = add_end_buttons(*column, widget, lbl_hinweis_);
    cmd_ok_ = buttons.cmd_ok;
    cmd_abbrechen_ = buttons.cmd_abbrechen;
    connect(cmd_ok_, &QPushButton::clicked, this, &FrmDarstellungen::accept);
    connect(cmd_abbrechen_, &QPushButton::clicked, this, &FrmDarstellungen::reject);
    return widget;
}

void FrmDarstellungen::change_tab(int index) {
    // The toolkit may lead the focus over OK meanwhile, for which a box is left unread.
    pages_[shown_tab_]->take_over();
    shown_tab_ = static_cast<std::size_t>(index);
    pages_[shown_tab_]->refresh();
}

void FrmDarstellungen::refresh_all() {
    cbo_grundriss_mass_->show();
    cbo_ueberhoehung_->show();
    for (DisplayPage* page : pages_) {
        page->refresh();
    }
}

bool FrmDarstellungen::check_scales() {
    return cbo_grundriss_mass_->check_on_ok() &&
           page(DisplayTab::vectors_position).check_scales() &&
           page(DisplayTab::vectors_height).check_scales() && cbo_ueberhoehung_->check_on_ok();
}

void FrmDarstellungen::accept() {
    // Scales first: taking over a number shows everything anew, a wrong scale too.
    if (!check_scales()) {
        return;
    }
    for (DisplayPage* page : pages_) {
        page->take_over();
    }
    const auto pointer = [this](int number) {
        if (set_mouse_pointer) {
            set_mouse_pointer(number);
        }
    };
    pointer(hourglass);
    left_ = display_accept(context_.session, context_.measurer, context_.printer);
    pointer(default_pointer);
    if (left_) {
        QDialog::accept();
    } else {
        context_.say(scale_message_on_ok(ScaleBox::ground));
    }
}

void FrmDarstellungen::reject() {
    give_up_edits();
    QDialog::reject();
}

void FrmDarstellungen::give_up_edits() {
    if (!left_) {
        left_ = true;
        display_reject(context_.session, plot_massstab_);
    }
}

void FrmDarstellungen::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (parentWidget() != nullptr) {
        centre_on(*this, *parentWidget()->window());
    }
}

}  // namespace veldra
