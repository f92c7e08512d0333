#include "windows/frmTorvel_status.h"

#include <QApplication>
#include <cmath>

#include "view/status_text.h"

namespace veldra {

TorvelStatus::TorvelStatus(QWidget* parent)
    : QStatusBar(parent),
      place_(new QLabel(this)),
      read_only_(new QLabel(QStringLiteral("schreibgeschützt"), this)),
      scale_(new QLabel(this)) {
    setObjectName(QStringLiteral("sta_torvel"));
    place_->setObjectName(QStringLiteral("lbl_ort"));
    scale_->setObjectName(QStringLiteral("lbl_massstab"));
    // A narrow window cuts the place off instead of growing with it.
    place_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    addWidget(place_, 1);
    read_only_->setObjectName(QStringLiteral("lbl_schreibgeschuetzt"));
    addPermanentWidget(read_only_);
    read_only_->hide();
    addPermanentWidget(scale_);
}

void TorvelStatus::show_place(const std::optional<WorldPoint>& place) {
    place_->setText(place ? QString::fromStdString(place_text(*place)) : QString());
}

void TorvelStatus::synchronise(const Session& session, bool read_only) {
    const bool loaded = session.datei_geladen == 1;
    scale_->setText(loaded ? QString::fromStdString(scale_text(session.view)) : QString());
    read_only_->setVisible(loaded && read_only);
    if (!loaded) {
        place_->clear();
    }
}

namespace {

QString bar_text(LongWork::Step step) {
    switch (step) {
        case LongWork::Step::drawing:
            return QStringLiteral("Zeichnen %p %");
        case LongWork::Step::writing:
            return QStringLiteral("Schreiben %p %");
        case LongWork::Step::reading:
        case LongWork::Step::unknown:
            break;
    }
    return QStringLiteral("Lesen %p %");
}

}  // namespace

TorvelProgress::TorvelProgress(QStatusBar& status)
    : QObject(&status),
      status_(status),
      bar_(new QProgressBar(&status)),
      cmd_abbrechen_(new QPushButton(QStringLiteral("Abbrechen"), &status)) {
    bar_->setObjectName(QStringLiteral("bar_fortschritt"));
    bar_->setMaximumSize(160, 16);
    bar_->setAlignment(Qt::AlignCenter);
    cmd_abbrechen_->setObjectName(QStringLiteral("cmd_abbrechen"));
    cmd_abbrechen_->setShortcut(Qt::Key_Escape);
    cmd_abbrechen_->setFocusPolicy(Qt::NoFocus);
    status_.addPermanentWidget(bar_);
    status_.addPermanentWidget(cmd_abbrechen_);
    bar_->hide();
    cmd_abbrechen_->hide();
    connect(cmd_abbrechen_, &QPushButton::clicked, this, &TorvelProgress::give_up);
}

void TorvelProgress::begin() {
    cancelled_ = false;
    forget_shares();
    wait_anew();
}

void TorvelProgress::wait_anew() {
    since_start_.start();
    since_events_.start();
}

void TorvelProgress::end() {
    command_given_up_ = false;
    if (!bar_->isHidden()) {
        bar_->hide();
        cmd_abbrechen_->hide();
    }
}

bool TorvelProgress::goes_on() {
    constexpr int events_interval = 40;
    if (since_start_.elapsed() >= patience && since_events_.elapsed() >= events_interval) {
        show_itself();
        serve();
        since_events_.start();
    }
    return !(may_be_given_up() && (cancelled_ || command_given_up_));
}

void TorvelProgress::serve() {
    if (!serves_events_) {
        status_.repaint();
        return;
    }
    if (before_events) {
        before_events();
    }
    QApplication::processEvents();
}

void TorvelProgress::give_up() {
    cancelled_ = may_be_given_up();
}

void TorvelProgress::give_up_command() {
    command_given_up_ = true;
}

void TorvelProgress::serve_no_more() {
    serves_events_ = false;
}

void TorvelProgress::show_itself() {
    constexpr int whole = 100;
    bar_->setRange(0, share() ? whole : 0);  // without a share it only moves
    bar_->setValue(static_cast<int>(std::floor(share().value_or(0) * whole)));
    bar_->setFormat(bar_text(step()));
    bar_->show();
    cmd_abbrechen_->setVisible(may_be_given_up());
}

bool TorvelProgress::may_be_given_up() const {
    return may_cancel_ && step() != Step::writing;
}

}  // namespace veldra
