#include "drawing/boundary_reduction.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "graphikdatei/line_reader.h"
#include "model/flat_index.h"
#include "os/files.h"

namespace veldra {

namespace {

using PointId = std::int32_t;

/// Numbers the texts of points, from 1.
class PointTexts {
 public:
    PointId number(std::string_view text) {
        const std::uint64_t hash = std::hash<std::string_view>{}(text);
        const auto matches = [&](PointId id) { return (*this)[id] == text; };
        const PointId known = index_.find(hash, matches);
        if (known != 0) {
            return known;
        }
        begins_.push_back(characters_.size());
        characters_ += text;
        const auto id = static_cast<PointId>(begins_.size());
        index_.put(hash, id, matches);
        return id;
    }

    [[nodiscard]] std::string_view operator[](PointId id) const {
        const auto at = static_cast<std::size_t>(id);
        const std::size_t end = at < begins_.size() ? begins_[at] : characters_.size();
        return std::string_view(characters_).substr(begins_[at - 1], end - begins_[at - 1]);
    }

 private:
    std::string characters_;
    std::vector<std::size_t> begins_;
    FlatIndex index_;
};

/// The unordered pairs of points that have a segment.
class SegmentSet {
 public:
    /// False if the pair is there already.
    bool insert(PointId from, PointId to) {
        const Pair pair = std::minmax(from, to);
        const std::uint64_t hash = mixed(static_cast<std::uint64_t>(pair.first) << 32U |
                                         static_cast<std::uint64_t>(pair.second));
        const auto matches = [&](std::int32_t row) {
            return pairs_[static_cast<std::size_t>(row) - 1] == pair;
        };
        if (index_.find(hash, matches) != 0) {
            return false;
        }
        pairs_.push_back(pair);
        index_.put(hash, static_cast<std::int32_t>(pairs_.size()), matches);
        return true;
    }

 private:
    using Pair = std::pair<PointId, PointId>;

    /// The finaliser of SplitMix64.
    static std::uint64_t mixed(std::uint64_t key) {
        key = (key ^ key >> 30U) * 0xbf58476d1ce4e5b9U;
        key = (key ^ key >> 27U) * 0x94d049bb133111ebU;
        return key ^ key >> 31U;
    }

    std::vector<Pair> pairs_;
    FlatIndex index_;
};

class Reduction {
 public:
    Reduction(const std::string& output, NamedBy named_by)
        : out_(output, named_by),
          no_point_(points_.number("")),
          current_(no_point_),
          written_(no_point_) {}

    void line(std::string_view line) {
        constexpr std::size_t text_at = 2;
        const char code = line.empty() ? '\0' : line.front();
        if (code == '@' || code == '#') {
            end_run();
            write_line("", line);
            written_ = no_point_;
        } else if (code == '0' || code == '1' || code == '2') {
            std::string_view text = line.substr(std::min(text_at, line.size()));
            text = text.substr(0, text.find_last_not_of(' ') + 1);
            point(code == '1', points_.number(text));
        }
    }

    ReductionResult finish() {
        end_run();
        out_.commit();
        return result_;
    }

 private:
    void point(bool follows, PointId id) {
        if (!follows) {
            end_run();
        } else {
            segment(current_, id);
        }
        current_ = id;
        if (!run_open_) {
            run_first_ = id;
            run_open_ = true;
        }
    }

    void end_run() {
        if (run_open_ && run_first_ != current_) {
            segment(current_, run_first_);
        }
        run_open_ = false;
    }

    void segment(PointId from, PointId to) {
        ++result_.segments;
        if (!segments_.insert(from, to)) {
            ++result_.dropped;
            return;
        }
        if (from != written_) {
            write_line("2 ", points_[from]);
        }
        write_line("1 ", points_[to]);
        written_ = to;
    }

    void write_line(std::string_view code, std::string_view text) {
        out_.write(code);
        out_.write(text);
        out_.write("\r\n");
    }

    ReplacedFile out_;
    PointTexts points_;
    SegmentSet segments_;
    ReductionResult result_;
    PointId no_point_;  ///< the empty text, before there is a point
    PointId current_;   ///< where the next segment begins
    PointId written_;   ///< where the output stands
    PointId run_first_ = 0;
    bool run_open_ = false;
};

}  // namespace

ReductionResult reduce_boundaries(const std::string& input, const std::string& output,
                                  const ReductionProgress& progress, NamedBy named_by) {
    constexpr std::int64_t lines_between_reports = 1 << 16;
    const auto size = static_cast<double>(std::max<std::uint64_t>(file_stamp(input).size, 1));
    LineReader reader(input);
    Reduction reduction(output, named_by);
    std::string_view line;
    double read = 0;
    while (reader.next(line)) {
        reduction.line(line);
        read += static_cast<double>(line.size() + 2);
        if (progress && reader.line_number() % lines_between_reports == 0) {
            progress(std::min(read / size, 1.0));
        }
    }
    return reduction.finish();
}

}  // namespace veldra
