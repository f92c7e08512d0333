#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "model/text_measurer.h"

class QWidget;

namespace veldra {

/// A dialog in which the user chooses face and style of a font, and its size if `with_size`; tests
/// put answers in its place. It is given its own name and what is set, and gives nothing if the
/// user gave up.
using FaceChooser = std::function<std::optional<FontSpec>(QWidget* parent, const QString& name,
                                                          const FontSpec& font, bool with_size)>;

/// The toolkit's dialog.
[[nodiscard]] FaceChooser toolkit_face_chooser();

}  // namespace veldra
