#include "windows/qt/picture_overlay.h"

#include <QPen>
#include <algorithm>

#include "plot/sheet_outlines.h"
#include "text/length_units.h"
#include "view/sheet_moving.h"
#include "windows/qt/picture_image.h"

namespace veldra {

namespace {

/// Mapping of metres in the view to logical pixels.
class LogicalPixels {
 public:
    explicit LogicalPixels(const Viewport& view)
        : pixel_(view.ansicht_masseinheit * twips_per_pixel),
          bottom_((view.ansicht_hw_max - view.ansicht_hw_min) / pixel_) {}

    [[nodiscard]] double x(double metres) const { return metres / pixel_; }
    [[nodiscard]] double y(double metres) const { return bottom_ - metres / pixel_; }
    [[nodiscard]] double length(double metres) const { return metres / pixel_; }

 private:
    double pixel_;
    double bottom_;
};

/// Sheets may reach far beyond the picture, where a painter loses its numbers.
double within_reach(double pixels) {
    constexpr double reach = 30000;
    return std::clamp(pixels, -reach, reach);
}

}  // namespace

QRectF to_logical(const Viewport& view, const GhostBox& box) {
    const LogicalPixels pixels(view);
    return {pixels.x(static_cast<double>(box.left)), pixels.y(static_cast<double>(box.top)),
            pixels.length(static_cast<double>(box.width)),
            pixels.length(static_cast<double>(box.height))};
}

std::vector<QLineF> moving_sheet_lines(const Session& session) {
    const Viewport& view = session.view;
    const LogicalPixels pixels(view);
    const auto x = [&](double rechts) {
        return within_reach(pixels.x(rechts - view.ansicht_rw_min));
    };
    const auto y = [&](double hoch) { return within_reach(pixels.y(hoch - view.ansicht_hw_min)); };
    std::vector<QLineF> lines;
    for (const Segment& line : sheet_outlines(session)) {
        lines.emplace_back(x(line.ax), y(line.ay), x(line.bx), y(line.by));
    }
    return lines;
}

void paint_overlay(QPainter& painter, const PictureOverlay& overlay, const Session& session) {
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    if (overlay.ghost) {
        painter.setPen(QPen(Qt::black, 1));
        painter.drawRect(*overlay.ghost);
    }
    painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    if (overlay.sheets) {
        const std::vector<QLineF> sheets = moving_sheet_lines(session);
        painter.setPen(QPen(Qt::white, 1));
        painter.drawLines(sheets.data(), static_cast<int>(sheets.size()));
    }
    if (overlay.legend) {
        // Its edges may lie on those of a sheet, where inverting twice would show neither.
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setPen(QPen(Qt::black, 1));
        painter.drawRect(*overlay.legend);
        painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    }
    if (overlay.rubber_band) {
        QPen dotted(Qt::white, 1);
        dotted.setDashPattern({3, 3});
        dotted.setCapStyle(Qt::FlatCap);  // others make the dashes longer at higher resolutions
        painter.setPen(dotted);
        painter.drawRect(*overlay.rubber_band);
    }
}

}  // namespace veldra
