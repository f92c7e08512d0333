#pragma once

#include <vector>

#include "drawing/display_samples.h"
#include "windows/forms/frmDarstellungen_page.h"

class QGroupBox;

namespace veldra {

/// Sizes of the observation signatures, on the screen or in the plot.
class DisplayObservationsPage final : public DisplayPage {
    Q_OBJECT

 public:
    DisplayObservationsPage(DisplayContext& context, SampleMedium medium, QWidget* parent);

    void refresh() override;

 private:
    struct Frame {
        const char* frame;
        const char* stem;
        const char* title;
        const char* label;
        ObservationSample sample;
        double Settings::*screen;
        double Settings::*plot;
    };
    [[nodiscard]] QGroupBox* build_frame(const Frame& frame);

    SampleMedium medium_;
    std::vector<SamplePicture*> pictures_;
};

}  // namespace veldra
