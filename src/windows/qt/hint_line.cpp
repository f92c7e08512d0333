#include "windows/qt/hint_line.h"

#include <QAccessible>
#include <QResizeEvent>

namespace veldra {

HintLine::HintLine(QWidget* parent) : QLabel(parent) {
    setObjectName(QStringLiteral("lbl_hinweis"));
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setMinimumHeight(fontMetrics().lineSpacing());  // also while there is nothing to tell
}

void HintLine::tell(const QString& hint) {
    if (hint == hint_) {
        return;
    }
    hint_ = hint;
    setAccessibleName(hint);
    show_hint();
    if (!hint.isEmpty()) {
        QAccessibleEvent event(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

void HintLine::show_hint() {
    const QString shown = fontMetrics().elidedText(hint_, Qt::ElideRight, contentsRect().width());
    setText(shown);
    // A tool tip is shown as it is, not as rich text.
    setToolTip(shown == hint_ ? QString() : hint_.toHtmlEscaped());
}

void HintLine::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    show_hint();
}

}  // namespace veldra
