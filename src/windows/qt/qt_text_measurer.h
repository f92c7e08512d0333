#pragma once

#include <map>
#include <memory>
#include <tuple>

#include "model/text_measurer.h"

namespace veldra {

/// Text sizes from the toolkit's fonts. Needs a running QGuiApplication.
class QtTextMeasurer final : public TextMeasurer {
 public:
    const FaceMetrics& face_metrics(const FontSpec& font) override;

 private:
    using Key = std::tuple<std::string, bool, bool>;  // face, bold, italic
    std::map<Key, std::unique_ptr<FaceMetrics>> faces_;
};

}  // namespace veldra
