#pragma once

#include <QLabel>
#include <QWheelEvent>
#include <array>
#include <cmath>

#include "torvel_fixture.h"

namespace veldra::test {

using ViewEdges = std::array<double, 4>;

inline ViewEdges edges(const Viewport& view) {
    return {view.ansicht_rw_min, view.ansicht_hw_min, view.ansicht_rw_max, view.ansicht_hw_max};
}

inline bool close_to(double a, double b, double tolerance = 1e-6) {
    return std::abs(a - b) <= tolerance;
}

inline bool close_to(const ViewEdges& a, const ViewEdges& b, double tolerance = 1e-5) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!close_to(a[i], b[i], tolerance)) {
            return false;
        }
    }
    return true;
}

/// A main window with a hand over its picture. Places are logical pixels of the picture.
class HandFixture : public TorvelFixture {
 protected:
    [[nodiscard]] QLabel* info() const { return window_->findChild<QLabel*>(text("lbl_punubinf")); }
    [[nodiscard]] QString undo_text() const { return action("m_ansicht_undo")->text(); }
    /// Metres of a logical pixel.
    [[nodiscard]] double pixel() const { return session_.view.ansicht_masseinheit * 15; }

    /// Logical pixel at a place on the ground.
    [[nodiscard]] QPoint at(double rechts, double hoch) const {
        return {static_cast<int>(std::lround((rechts - session_.view.ansicht_rw_min) / pixel())),
                static_cast<int>(std::lround((session_.view.ansicht_hw_max - hoch) / pixel()))};
    }

    /// The middle of a label.
    [[nodiscard]] QPoint middle(const Label& label) const {
        return at(session_.view.ansicht_rw_min + static_cast<double>(label.left + label.width / 2),
                  session_.view.ansicht_hw_min + static_cast<double>(label.top - label.height / 2));
    }

    /// `time` is that of the hand, milliseconds.
    void turn_wheel(const QPoint& place, int angle, quint64 time = 0) {
        QWheelEvent event(place, picture().mapToGlobal(QPointF(place)), {}, QPoint(0, angle),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        event.setTimestamp(time);
        QApplication::sendEvent(&picture(), &event);
    }
};

}  // namespace veldra::test
