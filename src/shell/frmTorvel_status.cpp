#include "shell/frmTorvel_status.h"

#include "view/status_text.h"

namespace veldra {

TorvelStatus::TorvelStatus(QWidget* parent)
    : QStatusBar(parent), place_(new QLabel(this)), scale_(new QLabel(this)) {
    setObjectName(QStringLiteral("sta_torvel"));
    place_->setObjectName(QStringLiteral("lbl_ort"));
    scale_->setObjectName(QStringLiteral("lbl_massstab"));
    addWidget(place_);
    addPermanentWidget(scale_);
}

void TorvelStatus::show_place(const std::optional<WorldPoint>& place) {
    place_->setText(place ? QString::fromStdString(place_text(*place)) : QString());
}

void TorvelStatus::synchronise(const Session& session) {
    const bool loaded = session.datei_geladen == 1;
    scale_->setText(loaded ? QString::fromStdString(scale_text(session.view)) : QString());
    if (!loaded) {
        place_->clear();
    }
}

}  // namespace veldra
