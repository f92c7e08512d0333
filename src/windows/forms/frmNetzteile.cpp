#include "windows/forms/frmNetzteile.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "dialogs/network_parts.h"
#include "text/codepage.h"
#include "windows/qt/dialog_controls.h"

namespace veldra {

namespace {

constexpr int usual_rows = 10;

/// A list that asks for as much room as its rows need, within reason.
class PartList final : public QListWidget {
 public:
    using QListWidget::QListWidget;
    [[nodiscard]] QSize sizeHint() const override {
        const int row = std::max(sizeHintForRow(0), fontMetrics().height() + 4);
        const int letter = fontMetrics().averageCharWidth();
        const int width = std::clamp(sizeHintForColumn(0) + 4 * letter, 24 * letter, 50 * letter);
        const int rows = std::clamp(count(), 4, usual_rows);
        return {width, rows * row + 2 * frameWidth()};
    }
};

}  // namespace

FrmNetzteile::FrmNetzteile(QWidget* window, const Session& session, Requests requests)
    // As a tool window it lets the shortcuts of the main window through.
    : QDialog(window, Qt::Tool | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint),
      session_(session),
      requests_(std::move(requests)) {
    setObjectName(QStringLiteral("frmNetzteile"));
    setWindowTitle(QStringLiteral("Netzteile"));
    build();
    synchronise();
}

void FrmNetzteile::build() {
    lst_netzteile_ = new PartList(this);
    lst_netzteile_->setObjectName(QStringLiteral("lst_netzteile"));
    lst_netzteile_->setAccessibleName(QStringLiteral("Netzteile, Plotten ja / nein"));
    lst_netzteile_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    // The menus of the main window hear their letters in here too, so these have others.
    auto* caption = make_buddy(QStringLiteral("lbl_netzteile"),
                               QStringLiteral("Plotten &ja / nein"), lst_netzteile_, this);
    cmd_plotten_ = make_button(QStringLiteral("cmd_plotten"), QStringLiteral("p&lotten"),
                               QStringLiteral("plotten"), this);
    cmd_nicht_plotten_ =
        make_button(QStringLiteral("cmd_nicht_plotten"), QStringLiteral("&nicht plotten"),
                    QStringLiteral("nicht plotten"), this);
    cmd_anzeigen_ =
        make_button(QStringLiteral("cmd_anzeigen"), QStringLiteral("Netzteil an&zeigen"),
                    QStringLiteral("Netzteil anzeigen"), this);
    cmd_anzeigen_->setDefault(true);

    auto* column = new QVBoxLayout(this);
    column->addWidget(caption);
    column->addWidget(lst_netzteile_, 1);
    auto* marks = new QHBoxLayout;
    marks->addWidget(cmd_plotten_);
    marks->addWidget(cmd_nicht_plotten_);
    column->addLayout(marks);
    column->addWidget(cmd_anzeigen_);

    connect(lst_netzteile_, &QListWidget::currentRowChanged, this, &FrmNetzteile::follow_selection);
    connect(lst_netzteile_, &QListWidget::itemClicked, this, &FrmNetzteile::follow_selection);
    connect(lst_netzteile_, &QListWidget::itemDoubleClicked, this, &FrmNetzteile::show_selected);
    connect(cmd_plotten_, &QPushButton::clicked, this, [this] { mark_selected(true); });
    connect(cmd_nicht_plotten_, &QPushButton::clicked, this, [this] { mark_selected(false); });
    connect(cmd_anzeigen_, &QPushButton::clicked, this, &FrmNetzteile::show_selected);
}

void FrmNetzteile::synchronise() {
    if (load_ != session_.window.frm_netzteile_load ||
        lst_netzteile_->count() != session_.netz.count()) {
        fill();
    }
    show_marks();
}

void FrmNetzteile::fill() {
    load_ = session_.window.frm_netzteile_load;
    filling_ = true;
    lst_netzteile_->clear();
    for (std::int32_t i = 1; i <= session_.netz.count(); ++i) {
        auto* item = new QListWidgetItem(
            QString::fromStdString(to_utf8(session_.netz[i].netz_name)), lst_netzteile_);
        // Without the flag for it the user cannot change the check; the buttons do.
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    }
    lst_netzteile_->setCurrentRow(session_.netz_aktuell - 1);
    filling_ = false;
    buttons_for_ = 1;
    lst_netzteile_->updateGeometry();
}

void FrmNetzteile::show_marks() {
    for (int row = 0; row < lst_netzteile_->count(); ++row) {
        const bool marked = session_.netz[row + 1].netz_plotmarke != table_false;
        lst_netzteile_->item(row)->setCheckState(marked ? Qt::Checked : Qt::Unchecked);
    }
    set_buttons(buttons_for_);
}

void FrmNetzteile::set_buttons(std::int32_t part) {
    const MarkButtons buttons = mark_buttons(session_, part);
    const bool had_focus = cmd_plotten_->hasFocus() || cmd_nicht_plotten_->hasFocus();
    if (had_focus && buttons.cmd_plotten != buttons.cmd_nicht_plotten) {
        QPushButton* const next = buttons.cmd_plotten ? cmd_plotten_ : cmd_nicht_plotten_;
        next->setEnabled(true);
        next->setFocus();
    }
    cmd_plotten_->setEnabled(buttons.cmd_plotten);
    cmd_nicht_plotten_->setEnabled(buttons.cmd_nicht_plotten);
}

std::int32_t FrmNetzteile::selected_part() const {
    return lst_netzteile_->currentRow() + 1;
}

void FrmNetzteile::follow_selection() {
    if (!filling_) {
        buttons_for_ = selected_part();
        set_buttons(buttons_for_);
    }
}

void FrmNetzteile::show_selected() {
    if (selected_part() >= 1) {
        requests_.show_part(selected_part());
    }
}

void FrmNetzteile::mark_selected(bool marked) {
    buttons_for_ = selected_part();
    requests_.mark(buttons_for_, marked);
    show_marks();
}

void FrmNetzteile::show_mark(std::int32_t part, bool marked) {
    if (marked) {
        lst_netzteile_->setCurrentRow(part - 1);
    }
    show_marks();
}

void FrmNetzteile::reject() {
    requests_.close();
}

/// Keys without Ctrl or Alt are those of the list; the main window must not take its arrows.
bool FrmNetzteile::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool plain = !key->modifiers().testAnyFlags(Qt::ControlModifier | Qt::AltModifier |
                                                          Qt::MetaModifier);
        const bool function_key = key->key() >= Qt::Key_F1 && key->key() <= Qt::Key_F35;
        if (plain && !function_key) {
            event->accept();
            return true;
        }
    }
    return QDialog::event(event);
}

}  // namespace veldra
