#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veldra {

/// Hash index from keys to row numbers. The keys stay in the rows: the caller gives a key's hash
/// and a test whether the row found has that key. Open addressing, linear probing, load below 3/4.
class FlatIndex {
 public:
    /// The row whose key matches, or 0.
    template <typename Matches>
    [[nodiscard]] std::int32_t find(std::uint64_t hash, Matches&& matches) const {
        if (slots_.empty()) {
            return 0;
        }
        const std::uint32_t tag = tag_of(hash);
        for (std::size_t at = tag & mask_;; at = (at + 1) & mask_) {
            const Slot& slot = slots_[at];
            if (slot.row == 0) {
                return 0;
            }
            if (slot.tag == tag && matches(slot.row)) {
                return slot.row;
            }
        }
    }

    /// Enters `row` (above 0); a row of the same key is replaced, so the last one entered wins.
    template <typename Matches>
    void put(std::uint64_t hash, std::int32_t row, Matches&& matches) {
        Slot& slot = slot_to_fill(tag_of(hash), matches);
        used_ += slot.row == 0 ? 1 : 0;
        slot = {tag_of(hash), row};
    }

    /// The row whose key matches; if there is none, `row` (above 0) is entered and given.
    template <typename Matches>
    std::int32_t find_or_put(std::uint64_t hash, std::int32_t row, Matches&& matches) {
        Slot& slot = slot_to_fill(tag_of(hash), matches);
        if (slot.row == 0) {
            slot = {tag_of(hash), row};
            ++used_;
        }
        return slot.row;
    }

    /// Loads the cache line that a look-up of `hash` will touch first.
    void prefetch(std::uint64_t hash) const {
        if (!slots_.empty()) {
            __builtin_prefetch(&slots_[tag_of(hash) & mask_]);
        }
    }

    /// The row that a look-up of `hash` will most likely find, by its first slot alone; else 0.
    [[nodiscard]] std::int32_t candidate(std::uint64_t hash) const {
        if (slots_.empty()) {
            return 0;
        }
        const Slot& slot = slots_[tag_of(hash) & mask_];
        return slot.tag == tag_of(hash) ? slot.row : 0;
    }

    void clear() {
        slots_.clear();
        mask_ = 0;
        used_ = 0;
    }

 private:
    /// The tag is all of the hash that is kept: it gives the place and tells most keys apart.
    struct Slot {
        std::uint32_t tag = 0;
        std::int32_t row = 0;
    };

    static std::uint32_t tag_of(std::uint64_t hash) {
        return static_cast<std::uint32_t>(hash >> 32U);
    }

    /// The slot whose key matches, or the free one where it belongs.
    template <typename Matches>
    Slot& slot_to_fill(std::uint32_t tag, Matches& matches) {
        if ((used_ + 1) * 4 > slots_.size() * 3) {
            grow();
        }
        std::size_t at = tag & mask_;
        while (slots_[at].row != 0 && !(slots_[at].tag == tag && matches(slots_[at].row))) {
            at = (at + 1) & mask_;
        }
        return slots_[at];
    }

    void grow() {
        std::vector<Slot> old(slots_.empty() ? 64 : slots_.size() * 2);
        old.swap(slots_);
        mask_ = slots_.size() - 1;
        for (const Slot& slot : old) {
            if (slot.row != 0) {
                std::size_t at = slot.tag & mask_;
                while (slots_[at].row != 0) {
                    at = (at + 1) & mask_;
                }
                slots_[at] = slot;
            }
        }
    }

    std::vector<Slot> slots_;
    std::size_t mask_ = 0;
    std::size_t used_ = 0;
};

/// Mixes all bits of a 64-bit word (finalizer of MurmurHash3, public domain).
[[nodiscard]] constexpr std::uint64_t mix_bits(std::uint64_t word) {
    word ^= word >> 33U;
    word *= 0xff51afd7ed558ccdULL;
    word ^= word >> 33U;
    word *= 0xc4ceb9fe1a85ec53ULL;
    word ^= word >> 33U;
    return word;
}

}  // namespace veldra
