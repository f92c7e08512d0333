#include "windows/qt/face_chooser.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <algorithm>
#include <array>
#include <utility>

#include "model/tables.h"
#include "text/codepage.h"
#include "windows/qt/qt_font.h"

namespace veldra {

namespace {

/// The font as it is drawn: where the system lacks its face, in the one that stands in for it.
QFont shown_font(const FontSpec& spec) {
    QFont font = text_font(spec);
    if (!QFontDatabase::hasFamily(font.family())) {
        font.setFamily(QFontInfo(font).family());
    }
    return font;
}

/// No text can be struck out.
void hide_strikeout(const QFontDialog& dialog) {
    for (QCheckBox* effect : dialog.findChildren<QCheckBox*>()) {
        if (effect->text() == QFontDialog::tr("Stri&keout")) {
            effect->hide();
        }
    }
}

/// Hides the box of sizes, its label and the list below it, the last of three.
void hide_sizes(const QFontDialog& dialog) {
    for (QLabel* label : dialog.findChildren<QLabel*>()) {
        if (label->text() == QFontDialog::tr("&Size") && label->buddy() != nullptr) {
            label->buddy()->hide();
            label->hide();
        }
    }
    const auto lists = dialog.findChildren<QListView*>(QString(), Qt::FindDirectChildrenOnly);
    if (!lists.isEmpty()) {
        lists.constLast()->hide();
    }
}

/// The toolkit's captions in German; `dialog` has them in whatever language it has.
void translate(const QFontDialog& dialog) {
    static constexpr std::array<std::pair<const char*, const char*>, 7> captions{
        {{"&Size", "&Größe"},
         {"&Font", "&Schriftart"},
         {"Font st&yle", "Schrifts&til"},
         {"Effects", "Effekte"},
         {"&Underline", "&Unterstrichen"},
         {"Sample", "Muster"},
         {"Wr&iting System", "Schriftsyst&em"}}};
    for (const auto& [toolkit, german] : captions) {
        for (QWidget* widget : dialog.findChildren<QWidget*>()) {
            for (const char* property : {"text", "title"}) {
                if (widget->property(property).toString() == QFontDialog::tr(toolkit)) {
                    widget->setProperty(property, QString::fromUtf8(german));
                }
            }
        }
    }
}

void name_buttons(const QFontDialog& dialog) {
    const auto* buttons = dialog.findChild<QDialogButtonBox*>();
    const auto name = [buttons](QDialogButtonBox::StandardButton which, const QString& text) {
        if (QPushButton* button = buttons == nullptr ? nullptr : buttons->button(which)) {
            button->setText(text);
        }
    };
    name(QDialogButtonBox::Ok, QStringLiteral("&OK"));
    name(QDialogButtonBox::Cancel, QStringLiteral("&Abbrechen"));
}

std::optional<FontSpec> ask_for_face(QWidget* parent, const QString& name, const FontSpec& font,
                                     bool with_size) {
    QFontDialog dialog(parent);
    dialog.setObjectName(name);
    dialog.setWindowTitle(QStringLiteral("Schrift"));
    dialog.setOption(QFontDialog::DontUseNativeDialog);
    dialog.setCurrentFont(shown_font(font));
    hide_strikeout(dialog);
    if (!with_size) {
        hide_sizes(dialog);
    }
    translate(dialog);
    name_buttons(dialog);
    // The face that stands in for one that the system lacks is not to be taken for a choice.
    const QString face_before = dialog.currentFont().family();
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    constexpr double smallest = 1;
    constexpr double largest = 1638;  // points; beyond it the toolkit's own limits begin
    const QFont chosen = dialog.selectedFont();
    FontSpec spec = font;
    if (chosen.family() != face_before) {
        spec.face = from_utf8(chosen.family().toStdString());
    }
    if (with_size) {
        spec.points = std::clamp(chosen.pointSizeF(), smallest, largest);
    }
    spec.bold = table_boolean(chosen.bold());
    spec.italic = table_boolean(chosen.italic());
    spec.underline = table_boolean(chosen.underline());
    return spec;
}

}  // namespace

FaceChooser toolkit_face_chooser() {
    return ask_for_face;
}

}  // namespace veldra
