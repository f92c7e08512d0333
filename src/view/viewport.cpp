#include "view/viewport.h"

#include <algorithm>

namespace veldra {

namespace {

/// A length of the picture in twips as its control tells it.
double picture_length(double twips) {
    return static_cast<double>(static_cast<float>(std::max(twips, 1.0)));
}

}  // namespace

void FitView(Session& session, double rw1, double hw1, double rw2, double hw2, std::int16_t mode) {
    if (mode == 1) {
        const double margin_r = (rw2 - rw1) / 20;
        const double margin_h = (hw2 - hw1) / 20;
        rw1 -= margin_r;
        rw2 += margin_r;
        hw1 -= margin_h;
        hw2 += margin_h;
    }
    const double width = picture_length(session.picture.width);
    const double height = picture_length(session.picture.height);
    const double scale_r = (rw2 - rw1) / width;
    const double scale_h = (hw2 - hw1) / height;
    Viewport& view = session.view;
    if (scale_r >= scale_h) {
        view.ansicht_rw_min = rw1;
        view.ansicht_rw_max = rw2;
        view.ansicht_hw_min = (hw1 + hw2 - height * scale_r) / 2;
        view.ansicht_hw_max = (hw1 + hw2 + height * scale_r) / 2;
        view.ansicht_masseinheit = scale_r;
    } else {
        view.ansicht_hw_min = hw1;
        view.ansicht_hw_max = hw2;
        view.ansicht_rw_min = (rw1 + rw2 - width * scale_h) / 2;
        view.ansicht_rw_max = (rw1 + rw2 + width * scale_h) / 2;
        view.ansicht_masseinheit = scale_h;
    }
}

PictureScale picture_scale(const Viewport& view) {
    return {static_cast<float>(view.ansicht_rw_max - view.ansicht_rw_min),
            static_cast<float>(view.ansicht_hw_max - view.ansicht_hw_min)};
}

PicturePoint to_picture(const Viewport& view, const WorldPoint& world) {
    return {static_cast<float>(world.rechts - view.ansicht_rw_min),
            static_cast<float>(world.hoch - view.ansicht_hw_min)};
}

WorldPoint to_world(const Viewport& view, const PicturePoint& point) {
    return {static_cast<double>(point.x) + view.ansicht_rw_min,
            static_cast<double>(point.y) + view.ansicht_hw_min};
}

PicturePoint from_twips(const Viewport& view, double x, double y) {
    const double hw_span = view.ansicht_hw_max - view.ansicht_hw_min;
    return {static_cast<float>(x * view.ansicht_masseinheit),
            static_cast<float>(hw_span - y * view.ansicht_masseinheit)};
}

ResizeResult resize_picture(Session& session, WindowMode last, WindowMode now,
                            const PictureSize& size) {
    clear_undo(session.window);
    if (last == WindowMode::minimised || now == WindowMode::minimised) {
        return {};
    }
    session.picture = size;
    if (session.datei_geladen != 1) {
        return {true, false};
    }
    Viewport view = session.view;
    if (last == now) {
        view.ansicht_rw_max =
            view.ansicht_rw_min + view.ansicht_masseinheit * picture_length(size.width);
        view.ansicht_hw_min =
            view.ansicht_hw_max - view.ansicht_masseinheit * picture_length(size.height);
    }
    FitView(session, view.ansicht_rw_min, view.ansicht_hw_min, view.ansicht_rw_max,
            view.ansicht_hw_max, 0);
    return {true, true};
}

}  // namespace veldra
