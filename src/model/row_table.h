#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace veldra {

/// A table whose rows count from 1. Row 0 always exists, holds the defaults and stays unused.
///
/// Rows live in blocks that never move, so a reference to a row stays valid while rows are added,
/// and growing never copies (a network of a million points would not fit twice). All members of a
/// row have initialisers; the rows behind the last one hold them.
template <typename Row>
class RowTable {
 public:
    RowTable() { clear(); }

    /// Number of rows behind row 0.
    [[nodiscard]] std::int32_t count() const { return count_; }

    Row& operator[](std::int32_t index) {
        return blocks_[static_cast<std::size_t>(index) >> block_bits]
                      [static_cast<std::size_t>(index) & block_mask];
    }
    const Row& operator[](std::int32_t index) const {
        return blocks_[static_cast<std::size_t>(index) >> block_bits]
                      [static_cast<std::size_t>(index) & block_mask];
    }

    /// Appends a row with the defaults of its type and returns its index.
    std::int32_t append() {
        ++count_;
        if ((static_cast<std::size_t>(count_) >> block_bits) >= blocks_.size()) {
            add_block();
        }
        return count_;
    }

    /// Another table of the same rows. It costs as much memory again, so nobody gets one unasked.
    [[nodiscard]] RowTable copy() const {
        RowTable other;
        other.blocks_.clear();
        for (const auto& block : blocks_) {
            other.add_block();
            std::copy_n(block.get(), block_size, other.blocks_.back().get());
        }
        other.count_ = count_;
        return other;
    }

    /// Drops the rows behind `last`.
    void truncate(std::int32_t last) {
        if (last < count_) {
            count_ = last;
            blocks_.resize((static_cast<std::size_t>(count_) >> block_bits) + 1);
            for (std::size_t row = (static_cast<std::size_t>(last) & block_mask) + 1;
                 row < block_size; ++row) {
                blocks_.back()[row] = Row{};
            }
        }
    }

    /// Drops all rows but row 0, which gets the defaults again.
    void clear() {
        blocks_.clear();
        add_block();
        count_ = 0;
    }

 private:
    static constexpr std::size_t block_bits = 8;
    static constexpr std::size_t block_size = std::size_t{1} << block_bits;
    static constexpr std::size_t block_mask = block_size - 1;

    /// Unlike make_unique, this does not fill the rows with zeros before they are initialised.
    void add_block() { blocks_.push_back(std::make_unique_for_overwrite<Row[]>(block_size)); }

    std::vector<std::unique_ptr<Row[]>> blocks_;
    std::int32_t count_ = 0;
};

}  // namespace veldra
