#include "windows/qt/covered_tiles.h"

#include <algorithm>

namespace veldra {

namespace {

constexpr std::size_t tile_pixels = std::size_t{CoveredTiles::side} * CoveredTiles::side;

int tiles_along(int pixels) {
    return (pixels + CoveredTiles::side - 1) / CoveredTiles::side;
}

}  // namespace

void CoveredTiles::forget() {
    for (const std::size_t tile : kept_) {
        is_kept_[tile] = false;
    }
    kept_.clear();
}

bool CoveredTiles::fits(const PixelCanvas& canvas) const {
    return canvas.width == width_ && canvas.height == height_;
}

void CoveredTiles::make_room(const PixelCanvas& canvas) {
    width_ = canvas.width;
    height_ = canvas.height;
    columns_ = tiles_along(width_);
    const std::size_t tiles =
        static_cast<std::size_t>(columns_) * static_cast<std::size_t>(tiles_along(height_));
    is_kept_.assign(tiles, false);
    kept_.clear();
    pixels_ = std::make_unique_for_overwrite<std::uint32_t[]>(tiles * tile_pixels);
}

void CoveredTiles::copy(const PixelCanvas& canvas, std::size_t tile, bool to_canvas) {
    const auto columns = static_cast<std::size_t>(columns_);
    const int left = static_cast<int>(tile % columns) * side;
    const int top = static_cast<int>(tile / columns) * side;
    const int width = std::min(side, width_ - left);
    const int rows = std::min(side, height_ - top);
    std::uint32_t* of_tile = pixels_.get() + tile * tile_pixels;
    std::uint32_t* of_canvas = canvas.pixels + top * canvas.stride + left;
    for (int row = 0; row < rows; ++row) {
        if (to_canvas) {
            std::copy_n(of_tile, width, of_canvas);
        } else {
            std::copy_n(of_canvas, width, of_tile);
        }
        of_tile += side;
        of_canvas += canvas.stride;
    }
}

void CoveredTiles::keep(const PixelCanvas& canvas, int left, int top, int right, int bottom) {
    if (!fits(canvas)) {
        make_room(canvas);
    }
    if (right < 0 || bottom < 0 || left >= width_ || top >= height_) {
        return;
    }
    const int last_x = std::min(right, width_ - 1);
    const int last_y = std::min(bottom, height_ - 1);
    for (int row = std::max(top, 0) / side; row * side <= last_y; ++row) {
        for (int column = std::max(left, 0) / side; column * side <= last_x; ++column) {
            const auto tile = static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                              static_cast<std::size_t>(column);
            if (!is_kept_[tile]) {
                is_kept_[tile] = true;
                kept_.push_back(tile);
                copy(canvas, tile, false);
            }
        }
    }
}

void CoveredTiles::give_back(const PixelCanvas& canvas) {
    if (fits(canvas)) {
        for (const std::size_t tile : kept_) {
            copy(canvas, tile, true);
        }
    }
    forget();
}

}  // namespace veldra
