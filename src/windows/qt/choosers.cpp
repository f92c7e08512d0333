#include "windows/qt/choosers.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "model/tables.h"
#include "text/codepage.h"
#include "windows/qt/qt_font.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

namespace {

constexpr double largest_size = 1638;

std::optional<std::int32_t> ask_for_colour(QWidget* parent, const QString& name,
                                           std::int32_t colour) {
    QColorDialog dialog(to_qcolor(colour), parent);
    dialog.setObjectName(name);
    dialog.setWindowTitle(QStringLiteral("Farbe"));
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return from_qcolor(dialog.currentColor());
}

FontSpec font_spec(const QFont& font) {
    FontSpec spec;
    spec.face = from_utf8(font.family().toStdString());
    spec.points = std::clamp(font.pointSizeF(), 1.0, largest_size);
    spec.bold = table_boolean(font.bold());
    spec.italic = table_boolean(font.italic());
    spec.underline = table_boolean(font.underline());
    return spec;
}

/// The font as it is drawn: where the system lacks its face, in the one that stands in for it.
QFont installed_font(const FontSpec& spec) {
    QFont font = text_font(spec);
    if (!QFontDatabase::hasFamily(font.family())) {
        font.setFamily(QFontInfo(font).family());
    }
    return font;
}

/// The toolkit's font dialog with a button for the colour of the letters.
std::optional<FontChoice> ask_for_font(QWidget* parent, const QString& name,
                                       const FontChoice& choice) {
    QDialog dialog(parent);
    dialog.setObjectName(name);
    dialog.setWindowTitle(QStringLiteral("Schrift"));
    auto* fonts = new QFontDialog(&dialog);
    fonts->setWindowFlags(Qt::Widget);
    fonts->setOptions(QFontDialog::NoButtons | QFontDialog::DontUseNativeDialog);
    fonts->setSizeGripEnabled(false);
    fonts->setCurrentFont(installed_font(choice.font));
    for (QCheckBox* effect : fonts->findChildren<QCheckBox*>()) {
        if (effect->text() == QFontDialog::tr("Stri&keout")) {
            effect->hide();  // no text here can have it
        }
    }
    // The face that stands in for one that the system lacks is not to be taken for a choice.
    const std::string shown_face = font_spec(fonts->currentFont()).face;
    auto* farbe = new QPushButton(QStringLiteral("Far&be..."), &dialog);
    farbe->setObjectName(QStringLiteral("cmd_farbe"));
    farbe->setAccessibleName(QStringLiteral("Farbe der Schrift"));
    std::int32_t colour = choice.colour;
    const auto show_colour = [&] {
        QPixmap swatch(farbe->iconSize());
        swatch.fill(to_qcolor(colour));
        farbe->setIcon(swatch);
    };
    show_colour();
    QObject::connect(farbe, &QPushButton::clicked, &dialog, [&] {
        const auto chosen = ask_for_colour(&dialog, QStringLiteral("dlg_schriftfarbe"), colour);
        colour = chosen.value_or(colour);
        show_colour();
    });
    auto* buttons = new QDialogButtonBox(&dialog);
    buttons->addButton(QStringLiteral("&OK"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("&Abbrechen"), QDialogButtonBox::RejectRole);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* column = new QVBoxLayout(&dialog);
    column->addWidget(fonts);
    auto* row = new QHBoxLayout;
    row->addWidget(farbe);
    row->addStretch();
    row->addWidget(buttons);
    column->addLayout(row);
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    FontSpec font = font_spec(fonts->currentFont());
    if (font.face == shown_face) {
        font.face = choice.font.face;
    }
    return FontChoice{font, colour};
}

}  // namespace

Choosers toolkit_choosers() {
    return {ask_for_colour, ask_for_font};
}

}  // namespace veldra
