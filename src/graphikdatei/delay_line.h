#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace veldra {

/// Items that wait until `length` others have come after them. Whoever reads records asks the
/// memory for the rows that a record concerns, which lie anywhere in large tables, and touches them
/// only when the record's time has come: the memory has brought them by then.
template <typename Item, std::size_t length>
class DelayLine {
 public:
    [[nodiscard]] bool is_empty() const { return waiting_ == 0; }
    [[nodiscard]] bool is_full() const { return waiting_ == length; }

    /// Makes an item at the end of the line, which must not be full.
    template <typename... Arguments>
    Item& enter(Arguments&&... arguments) {
        Item& item = items_[behind_].emplace(std::forward<Arguments>(arguments)...);
        behind_ = (behind_ + 1) % length;
        ++waiting_;
        return item;
    }

    /// The item that has waited longest; there must be one, until `leave`.
    [[nodiscard]] Item& first() { return *items_[(behind_ + length - waiting_) % length]; }
    void leave() { --waiting_; }

    /// The item that `length` / 2 others have come after; null if there is none.
    [[nodiscard]] const Item* half_way() const {
        const auto& item = items_[(behind_ + length - 1 - length / 2) % length];
        return waiting_ > length / 2 ? &*item : nullptr;
    }

 private:
    std::array<std::optional<Item>, length> items_;
    std::size_t behind_ = 0;  ///< the place behind the last one
    std::size_t waiting_ = 0;
};

}  // namespace veldra
