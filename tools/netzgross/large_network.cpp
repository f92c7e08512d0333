#include "large_network.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace veldra {

namespace {

constexpr std::int64_t kSpacing = 500'000;  // all lengths in millimetres
constexpr std::int64_t kJitter = 150'000;
constexpr std::int64_t kCentreEast = 2'576'000'000;
constexpr std::int64_t kCentreNorth = 5'624'000'000;
constexpr std::size_t kPieceSize = 1U << 20U;

/// A number that depends on nothing but its arguments, so that a point has the same place whenever
/// it is asked for. Mixing: G. Steele, D. Lea, C. Flood, "Fast splittable pseudorandom number
/// generators", OOPSLA 2014.
std::uint64_t mixed(std::uint64_t index, std::uint64_t purpose) {
    std::uint64_t z = (index * 8U + purpose + 1U) * 0x9E3779B97F4A7C15U;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
}

/// A whole number from 0 to `limit` - 1.
std::int64_t below(std::int64_t limit, std::int64_t index, std::uint64_t purpose) {
    const auto number = mixed(static_cast<std::uint64_t>(index), purpose);
    return static_cast<std::int64_t>(number % static_cast<std::uint64_t>(limit));
}

/// Collects the lines and hands them on in large pieces.
class Lines {
 public:
    explicit Lines(const ByteSink& sink) : sink_(sink) { buffer_.reserve(kPieceSize + 256); }

    Lines& text(std::string_view bytes) {
        buffer_ += bytes;
        return *this;
    }

    /// A blank and a number of `unit`-ths with as many decimals as the unit has zeros.
    Lines& number(std::int64_t value, std::int64_t unit) {
        buffer_ += ' ';
        whole(value / unit);
        if (unit > 1) {
            buffer_ += '.';
            for (std::int64_t digit = unit / 10; digit > 0; digit /= 10) {
                buffer_ += static_cast<char>('0' + value / digit % 10);
            }
        }
        return *this;
    }

    void end() {
        buffer_ += "\r\n";
        if (buffer_.size() >= kPieceSize) {
            flush();
        }
    }

    void flush() {
        sink_(buffer_);
        buffer_.clear();
    }

 private:
    void whole(std::int64_t value) {
        std::array<char, 20> digits{};
        std::size_t first = digits.size();
        do {
            digits[--first] = static_cast<char>('0' + value % 10);
            value /= 10;
        } while (value > 0);
        buffer_.append(&digits[first], digits.size() - first);
    }

    const ByteSink& sink_;
    std::string buffer_;
};

class LargeNetwork {
 public:
    LargeNetwork(const ByteSink& sink, long points, bool with_ellipses)
        : lines_(sink),
          points_(points < 0 ? 0 : points),
          columns_(static_cast<std::int64_t>(std::ceil(std::sqrt(static_cast<double>(points_))))),
          with_ellipses_(with_ellipses) {}

    void write() {
        write_head();
        for (std::int64_t i = 0; i < points_; ++i) {
            write_point(i);
        }
        for (std::int64_t i = 0; i < points_; ++i) {
            write_observations(i);
        }
        for (std::int64_t i = 0; with_ellipses_ && i < points_; ++i) {
            write_ellipse(i);
        }
        lines_.flush();
    }

 private:
    // All texts are bytes of Windows-1252.
    void write_head() {
        lines_.text("VERFAHRENLEGENDE Messreihe").number(points_, 1).text(" Punkte").end();
        lines_.text("MA\xDFSTABVEKTOREN 2 2 2 2 2 2").end();
        lines_.text("NETZTEIL Gro\xDFnetz").end();
        lines_.text("MA\xDFSTABGRUNDRISS 50000");
        lines_.number(east_origin() - kSpacing, 1000).number(north_origin() - kSpacing, 1000);
        lines_.text(" 73").end();
        lines_.text("OBJEKTE 1 1").number(with_ellipses_ ? 7 : 0, 1);
        lines_.text(" 0 0 0 0 1 0 1 1 1 1 -99 0").end();
    }

    void write_point(std::int64_t i) {
        lines_.text("PUNKTSIGNATUR");
        coordinates(i);
        const std::int64_t kind = below(10, i, 2);
        lines_.number(kind == 0 ? 0 : 1, 1).number(kind % 4, 1).number(kind == 0 ? 1 : 0, 1);
        lines_.text(" \"").text(label(i)).text("\"").end();
    }

    /// To the right, up, and along one of the two diagonals of the cell.
    void write_observations(std::int64_t i) {
        const bool right = (i + 1) % columns_ != 0;
        if (right) {
            write_observation(i, i + 1, 3);
        }
        write_observation(i, i + columns_, 4);
        if (right && below(2, i, 6) == 0) {
            write_observation(i, i + columns_ + 1, 5);
        } else if (right) {
            write_observation(i + 1, i + columns_, 5);
        }
    }

    void write_observation(std::int64_t from, std::int64_t to, std::uint64_t purpose) {
        if (from >= points_ || to >= points_) {
            return;
        }
        const std::int64_t random = below(1'000'000'000, from, purpose);
        constexpr std::array<std::string_view, 3> kKeywords = {"DISTANZ", "RICHTUNG", "RICHTUNG"};
        lines_.text(kKeywords[static_cast<std::size_t>(random % 3)]);
        const bool back = random % 3 == 2;
        coordinates(back ? to : from);
        coordinates(back ? from : to);
        lines_.number(random / 3 % 1000, 10);        // EV 0.0 to 99.9
        lines_.number(random / 3000 % 400, 100);     // NV 0.00 to 3.99
        lines_.number(random / 1200000 % 500, 100);  // EP 0.00 to 4.99
        lines_.end();
    }

    void write_ellipse(std::int64_t i) {
        lines_.text("LAGEFEHLERELLIPSE");
        coordinates(i);
        const std::int64_t random = below(1'000'000'000, i, 7);
        const std::int64_t major = 60 + random % 120;
        lines_.number(major, 100).number(major - random / 200 % 40, 100);
        lines_.number(random / 9000 % 20000, 100).end();
    }

    void coordinates(std::int64_t i) {
        const auto jitter = [&](std::uint64_t purpose) {
            return below(2 * kJitter, i, purpose) - kJitter;
        };
        lines_.number(east_origin() + i % columns_ * kSpacing + jitter(0), 1000);
        lines_.number(north_origin() + i / columns_ * kSpacing + jitter(1), 1000);
    }

    /// Ten digits, all different.
    static std::string label(std::int64_t i) { return std::to_string(5'208'000'001 + i); }

    [[nodiscard]] std::int64_t east_origin() const { return kCentreEast - columns_ / 2 * kSpacing; }
    [[nodiscard]] std::int64_t north_origin() const {
        return kCentreNorth - columns_ / 2 * kSpacing;
    }

    Lines lines_;
    std::int64_t points_;
    std::int64_t columns_;
    bool with_ellipses_;
};

}  // namespace

void write_large_network(const ByteSink& sink, long points, bool with_ellipses) {
    LargeNetwork(sink, points, with_ellipses).write();
}

void write_large_network(std::string& out, long points, bool with_ellipses) {
    write_large_network([&out](std::string_view piece) { out += piece; }, points, with_ellipses);
}

}  // namespace veldra
