#pragma once

#include <any>

namespace veldra {

/// What a layer keeps from one drawing to the next. Only the layer knows what that is, so that
/// whoever holds it need not know the layer.
class LayerMemory {
 public:
    /// What is kept; a fresh `Kept` the first time.
    template <typename Kept>
    [[nodiscard]] Kept& of() {
        if (Kept* kept = std::any_cast<Kept>(&kept_)) {
            return *kept;
        }
        return kept_.emplace<Kept>();
    }

    /// What is kept; an empty `Kept` if there is nothing yet.
    template <typename Kept>
    [[nodiscard]] const Kept& of() const {
        static const Kept nothing;
        const Kept* kept = std::any_cast<Kept>(&kept_);
        return kept != nullptr ? *kept : nothing;
    }

 private:
    std::any kept_;
};

}  // namespace veldra
