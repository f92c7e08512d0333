#include "windows/qt/choosers.h"

#include "windows/qt/colour_dialog.h"
#include "windows/qt/font_dialog.h"

namespace veldra {

namespace {

std::optional<std::int32_t> ask_for_colour(QWidget* parent, const QString& name,
                                           std::int32_t colour) {
    ColourDialog dialog(parent, name, colour);
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return dialog.colour();
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
