#include "windows/qt/picture_notice.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace veldra {

PictureNotice::PictureNotice(QWidget* picture) : QFrame(picture) {
    constexpr int space = 8;
    setObjectName(QStringLiteral("fra_abgebrochen"));
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setAutoFillBackground(true);
    setCursor(Qt::ArrowCursor);
    // What the mouse does here is not meant for the picture beneath.
    setAttribute(Qt::WA_NoMousePropagation);
    auto* row = new QHBoxLayout(this);
    row->setSizeConstraint(QLayout::SetFixedSize);
    auto* text =
        new QLabel(QStringLiteral("Das Zeichnen wurde abgebrochen, das Bild ist unvollständig."));
    text->setObjectName(QStringLiteral("lbl_abgebrochen"));
    row->addWidget(text);
    auto* redraw = new QPushButton(QStringLiteral("&Neu zeichnen"));
    redraw->setObjectName(QStringLiteral("cmd_neu_zeichnen"));
    // The keys stay with the picture.
    redraw->setFocusPolicy(Qt::TabFocus);
    row->addWidget(redraw);
    connect(redraw, &QPushButton::clicked, this, &PictureNotice::redraw_wanted);
    move(space, space);
    hide();
}

/// Keys go on to the picture.
void PictureNotice::hideEvent(QHideEvent* event) {
    if (isAncestorOf(window()->focusWidget())) {
        parentWidget()->setFocus();
    }
    QFrame::hideEvent(event);
}

}  // namespace veldra
