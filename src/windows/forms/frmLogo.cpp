#include "windows/forms/frmLogo.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

#include "windows/qt/dialog_area.h"
#include "windows/qt/dialog_place.h"

namespace veldra {

FrmLogo::FrmLogo(QWidget* window, std::string& bestaetigung, ShownBy shown_by,
                 const std::string& version, int wait)
    : QDialog(window, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      bestaetigung_(bestaetigung),
      shown_by_(shown_by),
      wait_(wait),
      timer_(new QTimer(this)) {
    setObjectName(QStringLiteral("frmLogo"));
    setWindowTitle(QStringLiteral("VELDRA"));
    setModal(true);
    build(version);
    timer_->setSingleShot(true);
    connect(timer_, &QTimer::timeout, this, &FrmLogo::end_wait);
    connect(chk_bestaetigen_, &QCheckBox::toggled, this, &FrmLogo::follow_check_box);
    connect(cmd_ok_, &QPushButton::clicked, this, &QDialog::accept);
    activate();
}

void FrmLogo::build(const std::string& version) {
    auto* logo = new QLabel(this);
    logo->setObjectName(QStringLiteral("img_logo"));
    logo->setPixmap(QIcon(QStringLiteral(":/veldra/icons/logo.svg"))
                        .pixmap(QSize(360, 180), devicePixelRatioF()));
    auto* name = new QLabel(QStringLiteral("VELDRA"), this);
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 2.2);
    large.setBold(true);
    large.setLetterSpacing(QFont::AbsoluteSpacing, 3);
    name->setFont(large);
    auto* purpose =
        new QLabel(QStringLiteral("Darstellung und Plot geodätischer Netzausgleichungen"), this);
    lbl_version_ = new QLabel(QString::fromStdString(version), this);
    lbl_version_->setObjectName(QStringLiteral("lbl_version"));
    lbl_version_->setTextFormat(Qt::PlainText);
    chk_bestaetigen_ = new QCheckBox(QStringLiteral("künftig nicht mehr bestätigen"), this);
    chk_bestaetigen_->setObjectName(QStringLiteral("chk_bestaetigen"));
    cmd_ok_ = new QPushButton(QStringLiteral("OK"), this);
    cmd_ok_->setObjectName(QStringLiteral("cmd_ok"));
    cmd_ok_->setDefault(true);

    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    auto* contents = new QWidget(this);
    auto* shown = new QVBoxLayout(contents);
    shown->setContentsMargins(0, 0, 0, 0);
    shown->addWidget(logo);
    shown->addWidget(name, 0, Qt::AlignHCenter);
    shown->addWidget(purpose, 0, Qt::AlignHCenter);
    shown->addWidget(lbl_version_, 0, Qt::AlignHCenter);
    column->addWidget(new DialogArea(contents, this), 1);
    column->addSpacing(8);
    auto* row = new QHBoxLayout;
    if (shown_by_ == ShownBy::start) {
        row->addWidget(chk_bestaetigen_);
    }
    row->addStretch();
    row->addWidget(cmd_ok_);
    if (shown_by_ == ShownBy::help) {
        row->addStretch();
    }
    column->addLayout(row);
}

void FrmLogo::activate() {
    chk_bestaetigen_->setVisible(shown_by_ == ShownBy::start);
    const bool closes_by_itself = shown_by_ == ShownBy::start && bestaetigung_ == "N";
    const QSignalBlocker quiet(chk_bestaetigen_);
    chk_bestaetigen_->setChecked(closes_by_itself);
    cmd_ok_->setEnabled(!closes_by_itself);
    if (!closes_by_itself) {
        cmd_ok_->setFocus();
    }
}

void FrmLogo::centre() {
    if (parentWidget() != nullptr) {
        centre_on(*this, *parentWidget()->window());
    }
}

bool FrmLogo::event(QEvent* event) {
    // At the start the main window may get its place on the screen only after the logo is shown.
    if (event->type() == QEvent::WindowActivate && !activated_) {
        activated_ = true;
        centre();
    }
    return QDialog::event(event);
}

void FrmLogo::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    centre();
    if (!cmd_ok_->isEnabled()) {
        timer_->start(wait_);
    }
}

void FrmLogo::follow_check_box(bool ticked) {
    if (ticked) {
        bestaetigung_.assign(1, 'N');
    } else {
        bestaetigung_.clear();
        cmd_ok_->setEnabled(true);
        cmd_ok_->setFocus();
    }
}

void FrmLogo::end_wait() {
    if (chk_bestaetigen_->isChecked()) {
        accept();
    }
}

void FrmLogo::reject() {
    if (cmd_ok_->isEnabled()) {
        QDialog::reject();
    }
}

}  // namespace veldra
