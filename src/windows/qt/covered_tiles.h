#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "windows/qt/pixel_canvas.h"

namespace veldra {

/// What a picture shows beneath the things that are painted over it, kept by square tiles, so that
/// they can be painted anew without a second picture.
class CoveredTiles {
 public:
    /// Pixels of a tile's side.
    static constexpr int side = 64;

    /// Forgets what is kept: the picture is another one now.
    void forget();

    /// Keeps each tile that the box touches and that is not kept yet, as it is now. The box is in
    /// pixels, its last column and row included; what lies outside the picture does not matter.
    /// A picture of another size than the one before is another picture.
    void keep(const PixelCanvas& canvas, int left, int top, int right, int bottom);

    /// Gives the picture back what it showed, and forgets it.
    void give_back(const PixelCanvas& canvas);

    /// The number of tiles that are kept.
    [[nodiscard]] std::size_t kept() const { return kept_.size(); }

 private:
    [[nodiscard]] bool fits(const PixelCanvas& canvas) const;
    void make_room(const PixelCanvas& canvas);
    /// Copies a tile; `to_canvas` says in which direction.
    void copy(const PixelCanvas& canvas, std::size_t tile, bool to_canvas);

    int width_ = 0;
    int height_ = 0;
    int columns_ = 0;
    std::vector<bool> is_kept_;
    std::vector<std::size_t> kept_;
    /// One tile after the other; pages of tiles that are never kept are never touched.
    std::unique_ptr<std::uint32_t[]> pixels_;
};

}  // namespace veldra
