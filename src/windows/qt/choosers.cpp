#include "windows/qt/choosers.h"

#include <QColorDialog>

#include "windows/qt/font_dialog.h"
#include "windows/qt/sample_picture.h"

namespace veldra {

namespace {

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

std::optional<FontChoice> ask_for_font(QWidget* parent, const QString& name,
                                       const FontChoice& choice) {
    FontDialog dialog(parent, name, choice, {true, true});
    dialog.choose_colour = ask_for_colour;
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return dialog.choice();
}

std::optional<FontSpec> ask_for_face(QWidget* parent, const QString& name, const FontSpec& font,
                                     bool with_size) {
    FontDialog dialog(parent, name, {font, 0}, {with_size, false});
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return dialog.choice().font;
}

}  // namespace

Choosers toolkit_choosers() {
    return {ask_for_colour, ask_for_font};
}

FaceChooser toolkit_face_chooser() {
    return ask_for_face;
}

}  // namespace veldra
