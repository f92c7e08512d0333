#pragma once

#include <QLineF>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <optional>
#include <vector>

#include "model/session.h"
#include "view/label_moving.h"

namespace veldra {

/// What lies over the picture while the user drags, in logical pixels. The layers beneath stay as
/// they are.
struct PictureOverlay {
    std::optional<QRectF> rubber_band;
    std::optional<QRectF> ghost;   ///< frame of the label that is being moved
    QPointF shift;                 ///< how far the whole picture is being pushed
    bool sheets = false;           ///< the sheets of the plot are being moved
    std::optional<QRectF> legend;  ///< empty box of the legend that moves with them

    bool operator==(const PictureOverlay&) const = default;
};

/// A box of ground in the picture's logical pixels.
[[nodiscard]] QRectF to_logical(const Viewport& view, const GhostBox& box);

/// The lines of the sheets, logical pixels.
[[nodiscard]] std::vector<QLineF> moving_sheet_lines(const Session& session);

/// Paints the overlay of a session's picture. Rubber band and sheets invert what lies beneath, so
/// that they are seen on every colour.
void paint_overlay(QPainter& painter, const PictureOverlay& overlay, const Session& session);

}  // namespace veldra
