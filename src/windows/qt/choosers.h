#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

#include "dialogs/display_fonts.h"
#include "model/text_measurer.h"

class QWidget;

namespace veldra {

/// The dialogs in which a user chooses a colour or a font; tests put answers in their place. They
/// are given the dialog's name and what is set, and give nothing if the user gave up.
struct Choosers {
    using Colour = std::function<std::optional<std::int32_t>(QWidget* parent, const QString& name,
                                                             std::int32_t colour)>;
    using Font = std::function<std::optional<FontChoice>(QWidget* parent, const QString& name,
                                                         const FontChoice& choice)>;
    Colour colour;
    Font font;
};

/// The program's dialogs.
[[nodiscard]] Choosers toolkit_choosers();

/// A dialog in which the user chooses face and style of a font, and its size if `with_size`; tests
/// put answers in its place. It is given its own name and what is set, and gives nothing if the
/// user gave up.
using FaceChooser = std::function<std::optional<FontSpec>(QWidget* parent, const QString& name,
                                                          const FontSpec& font, bool with_size)>;

/// The program's dialog.
[[nodiscard]] FaceChooser toolkit_face_chooser();

}  // namespace veldra
