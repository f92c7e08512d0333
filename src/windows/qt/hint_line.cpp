#include "windows/qt/hint_line.h"

#include <QAccessible>
#include <QResizeEvent>

#include "windows/qt/plain_tool_tip.h"

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
    setToolTip(shown == hint_ ? QString() : plain_tool_tip(hint_));
}

void HintLine::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    show_hint();
}

}  // namespace veldra
