#pragma once

#include "model/text_measurer.h"

namespace veldra::test {

/// A face with round numbers: each letter half as wide as the font is high. At 10 points a line is
/// 200 twips high and a letter 100 twips wide.
class FakeMeasurer final : public TextMeasurer {
 public:
    FakeMeasurer() {
        metrics_.advance.fill(0.5F);
        metrics_.ascent = 0.75F;
        metrics_.descent = 0.25F;
    }
    const FaceMetrics& face_metrics(const FontSpec& /*font*/) override { return metrics_; }

 private:
    FaceMetrics metrics_;
};

}  // namespace veldra::test
