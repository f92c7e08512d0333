#pragma once

#include <cstdint>
#include <string>

namespace veldra {

/// A text over the picture that the user can point at and drag. The box is in metres of ground
/// relative to the lower left corner of the view; `top` is the upper edge, y grows to the north.
struct Label {
    std::string caption;  ///< Windows-1252
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
    bool visible = false;
    bool enabled = false;
};

/// The control arrays that labels belong to.
enum class LabelArray : std::uint8_t { lbl_pubez, lbl_fzbez, lbl_nubez };

/// The array's name as the controls bear it.
[[nodiscard]] constexpr const char* label_array_name(LabelArray array) {
    switch (array) {
        case LabelArray::lbl_pubez:
            return "lbl_pubez";
        case LabelArray::lbl_fzbez:
            return "lbl_fzbez";
        case LabelArray::lbl_nubez:
            return "lbl_nubez";
    }
    return "";
}

}  // namespace veldra
