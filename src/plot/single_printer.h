#pragma once

#include "plot/printer.h"
#include "plot/printer_adapters.h"

namespace veldra {

/// A device as a collection of one, which is the current printer. There is no default printer to
/// follow and no number of copies: a job is repeated for each.
class SinglePrinter : public Printer {
 public:
    [[nodiscard]] std::int32_t Count() override { return 1; }
    [[nodiscard]] std::int16_t Orientation() override { return orientation_; }
    [[nodiscard]] std::int16_t PaperBin() override { return bin_; }
    [[nodiscard]] std::int16_t ColorMode() override { return colour_mode_; }
    void set_Copies(std::int16_t /*copies*/) override {}
    void set_TrackDefault(bool /*track*/) override {}

    [[nodiscard]] double TextWidth(std::string_view text, const FontSpec& font) override {
        return printed_size(measurer().face_metrics(font), font.points, text).width;
    }
    [[nodiscard]] double TextHeight(std::string_view text, const FontSpec& font) override {
        return printed_size(measurer().face_metrics(font), font.points, text).height;
    }

 protected:
    [[nodiscard]] bool lying() const { return orientation_ == querformat; }

    std::int16_t orientation_ = hochformat;
    std::int16_t bin_ = 0;
    std::int16_t colour_mode_ = print_monochrome;
};

}  // namespace veldra
