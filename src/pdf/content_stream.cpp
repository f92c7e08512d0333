#include "pdf/content_stream.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace veldra {

namespace {

constexpr std::size_t piece_size = std::size_t{1} << 20U;
constexpr std::size_t longest_number = 24;

/// The digits of 00 to 99 in a row.
constexpr std::array<char, 200> make_pairs() {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}
constexpr std::array<char, 200> digit_pairs = make_pairs();

/// Writes the digits so that they end before `end`; gives their first place.
char* put_digits(std::uint64_t value, char* end) {
    while (value >= 100) {
        end -= 2;
        std::memcpy(end, &digit_pairs[2 * (value % 100)], 2);
        value /= 100;
    }
    if (value >= 10) {
        end -= 2;
        std::memcpy(end, &digit_pairs[2 * value], 2);
    } else {
        *--end = static_cast<char>('0' + value);
    }
    return end;
}

}  // namespace

ContentStream::ContentStream(Sink sink) : sink_(std::move(sink)), buffer_(piece_size, '\0') {}

char* ContentStream::room(std::size_t size) {
    if (buffer_.size() - used_ < size) {
        buffer_.resize(std::max(2 * buffer_.size(), used_ + size));
    }
    return buffer_.data() + used_;
}

void ContentStream::whole(std::int64_t number) {
    std::array<char, longest_number> digits{};
    const bool negative = number < 0;
    const auto magnitude = negative ? std::uint64_t{0} - static_cast<std::uint64_t>(number)
                                    : static_cast<std::uint64_t>(number);
    char* const end = digits.data() + digits.size() - 1;
    *end = ' ';
    char* first = put_digits(magnitude, end);
    if (negative) {
        *--first = '-';
    }
    const auto size = static_cast<std::size_t>(end + 1 - first);
    std::memcpy(room(longest_number), first, size);
    used_ += size;
}

void ContentStream::real(double number) {
    constexpr std::int64_t thousand = 1000;
    const std::int64_t thousandths = std::llround(number * thousand);
    const std::int64_t magnitude = std::abs(thousandths);
    if (thousandths < 0) {
        text("-");
    }
    whole(magnitude / thousand);
    std::int64_t rest = magnitude % thousand;
    if (rest == 0) {
        return;
    }
    --used_;  // the blank
    text(".");
    for (std::int64_t unit = thousand / 10; rest > 0; unit /= 10) {
        *room(1) = static_cast<char>('0' + rest / unit);
        ++used_;
        rest %= unit;
    }
    text(" ");
}

void ContentStream::text(std::string_view bytes) {
    std::memcpy(room(bytes.size()), bytes.data(), bytes.size());
    used_ += bytes.size();
}

void ContentStream::string(std::string_view bytes) {
    text("(");
    while (!bytes.empty()) {
        const std::size_t plain = std::min(bytes.find_first_of("()\\\r\n"), bytes.size());
        text(bytes.substr(0, plain));
        bytes.remove_prefix(plain);
        if (!bytes.empty()) {
            text("\\");
            const char special = bytes.front();
            // A reader would take a bare end of line for another one.
            text(special == '\r' ? "r" : special == '\n' ? "n" : bytes.substr(0, 1));
            bytes.remove_prefix(1);
        }
    }
    text(")");
}

void ContentStream::end_line() {
    *room(1) = '\n';
    ++used_;
    if (used_ >= piece_size - 4096) {
        flush();
    }
}

void ContentStream::flush() {
    if (used_ > 0) {
        sink_(deflater_.pack({buffer_.data(), used_}));
        used_ = 0;
    }
}

}  // namespace veldra
