#include "pdf/page_list.h"

#include <array>
#include <cstring>
#include <string_view>

namespace veldra {

namespace {

/// The head of a page's record, in front of its pieces and texts.
struct RecordHead {
    PdfPageSize size;
    std::uint64_t pieces = 0;
    std::uint64_t netzteil = 0;  ///< bytes
    std::uint64_t blatt = 0;
};

template <typename Value>
void append_value(std::string& bytes, const Value& value) {
    std::array<char, sizeof(Value)> raw{};
    std::memcpy(raw.data(), &value, sizeof(Value));
    bytes.append(raw.data(), raw.size());
}

template <typename Value>
Value value_at(std::string_view bytes, std::size_t place) {
    Value value;
    std::memcpy(&value, bytes.data() + place, sizeof(Value));
    return value;
}

}  // namespace

void PdfPageList::append(const PdfPageRecord& page) {
    std::string bytes;
    append_value(bytes, RecordHead{page.size, page.pieces.size(), page.title.netzteil.size(),
                                   page.title.blatt.size()});
    for (const SpoolPiece& piece : page.pieces) {
        append_value(bytes, piece);
    }
    bytes += page.title.netzteil;
    bytes += page.title.blatt;
    spool_.append(bytes);
    ++count_;
}

bool PdfPageList::Walk::next() {
    if (passed_ == list_.count_) {
        return false;
    }
    ++passed_;
    const auto head = value_at<RecordHead>(list_.spool_.read(place_, sizeof(RecordHead)), 0);
    place_ += sizeof(RecordHead);
    const std::size_t pieces = head.pieces * sizeof(SpoolPiece);
    const std::string bytes = list_.spool_.read(place_, pieces + head.netzteil + head.blatt);
    place_ += bytes.size();
    page_.size = head.size;
    page_.pieces.clear();
    for (std::size_t at = 0; at < pieces; at += sizeof(SpoolPiece)) {
        page_.pieces.push_back(value_at<SpoolPiece>(bytes, at));
    }
    page_.title.netzteil = bytes.substr(pieces, head.netzteil);
    page_.title.blatt = bytes.substr(pieces + head.netzteil);
    return true;
}

}  // namespace veldra
