#pragma once

#include <QString>
#include <QTextDocument>

namespace veldra {

/// A text as a tool tip that shows it letter by letter: the toolkit takes what looks like markup
/// for such.
[[nodiscard]] inline QString plain_tool_tip(const QString& text) {
    return Qt::mightBeRichText(text) ? QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped())
                                     : text;
}

}  // namespace veldra
