#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "text/codepage.h"

namespace veldra {

/// One line of the legend's title. Text and font name are Windows-1252.
class Titelzeile {
 public:
    /// What the longest line of a graphic file has room for behind the longest keyword of a title.
    static constexpr std::size_t longest_text = 32750;

    /// Control characters become blanks, and what a record cannot hold is cut off.
    void setTitelText(std::string_view text) { text_ = one_line(text.substr(0, longest_text)); }
    [[nodiscard]] const std::string& getTitelText() const { return text_; }
    /// Height of a digit in millimetres of paper.
    void setTitelSize(float size) { size_ = size; }
    [[nodiscard]] float getTitelSize() const { return size_; }
    void setTitelFont(std::string font) { font_ = std::move(font); }
    [[nodiscard]] const std::string& getTitelFont() const { return font_; }
    /// The three styles are booleans of the tables: 0 or -1.
    void setTitelBold(std::int16_t bold) { bold_ = bold; }
    [[nodiscard]] std::int16_t getTitelBold() const { return bold_; }
    void setTitelItal(std::int16_t italic) { italic_ = italic; }
    [[nodiscard]] std::int16_t getTitelItal() const { return italic_; }
    void setTitelUndr(std::int16_t underline) { underline_ = underline; }
    [[nodiscard]] std::int16_t getTitelUndr() const { return underline_; }

 private:
    std::string text_;
    float size_ = 3.0F;
    std::string font_ = "Arial";
    std::int16_t bold_ = 0;
    std::int16_t italic_ = 0;
    std::int16_t underline_ = 0;
};

}  // namespace veldra
