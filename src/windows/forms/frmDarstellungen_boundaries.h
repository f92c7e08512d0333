#pragma once

#include <vector>

#include "windows/forms/frmDarstellungen_page.h"

class QGroupBox;

namespace veldra {

/// Lines of the administrative boundaries, level by level.
class DisplayBoundariesPage final : public DisplayPage {
    Q_OBJECT

 public:
    DisplayBoundariesPage(DisplayContext& context, QWidget* parent);

    void refresh() override;

 private:
    static constexpr std::size_t level_count = 7;

    [[nodiscard]] QGroupBox* build_frame(std::size_t level);
    [[nodiscard]] PenPlaces places(std::size_t level);

    std::vector<SamplePicture*> pictures_;
};

}  // namespace veldra
