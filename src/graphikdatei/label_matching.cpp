#include "graphikdatei/label_matching.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "graphikdatei/keywords.h"
#include "text/codepage.h"

namespace veldra {

namespace {

/// Places this close are one: computed anew, a point may have moved by less than its last digit
/// that is shown.
constexpr double same_place = 0.01;  // metres

double distance(const Position& a, const Position& b) {
    return std::hypot(a.rechts - b.rechts, a.hoch - b.hoch);
}

/// Finds entries by place, within a centimetre.
class PlaceIndex {
 public:
    void add(const Position& place, std::size_t entry) {
        cells_.emplace(key(cell(place.rechts), cell(place.hoch)), Entry{place, entry});
    }

    template <typename Take>
    void near(const Position& place, const Take& take) const {
        if (cells_.empty()) {
            return;
        }
        const std::int64_t across = cell(place.rechts);
        const std::int64_t up = cell(place.hoch);
        for (std::int64_t i = across - 1; i <= across + 1; ++i) {
            for (std::int64_t j = up - 1; j <= up + 1; ++j) {
                const auto [first, last] = cells_.equal_range(key(i, j));
                std::for_each(first, last, [&](const auto& found) {
                    if (distance(found.second.place, place) <= same_place) {
                        take(found.second.entry);
                    }
                });
            }
        }
    }

 private:
    struct Entry {
        Position place;
        std::size_t entry;
    };

    /// Cells are two centimetres wide. Places beyond all sense share one.
    static std::int64_t cell(double coordinate) {
        constexpr double beyond = 1e15;
        return std::fabs(coordinate) < beyond
                   ? static_cast<std::int64_t>(std::floor(coordinate / (2 * same_place)))
                   : 0;
    }
    static std::uint64_t key(std::int64_t across, std::int64_t up) {
        constexpr std::uint64_t odd = 0x9E3779B97F4A7C15U;
        return (static_cast<std::uint64_t>(across) * odd) ^ static_cast<std::uint64_t>(up);
    }

    std::unordered_multimap<std::uint64_t, Entry> cells_;
};

/// A record that a label may go to.
struct Candidate {
    std::int64_t line = 0;
    Position place;
    std::int32_t epoch = 0;
};

/// A label on its way.
struct Traveller {
    const MovedLabel* label;
    std::vector<Candidate> by_number;
    std::vector<Candidate> by_place;
    std::vector<Candidate> epochs;
    Position target;  ///< of the point that has the label's number, or of the label itself
    bool number_gone = false;
    bool settled = false;
};

/// The labels of one part.
class PartMatching {
 public:
    explicit PartMatching(const PartWork& part) {
        for (const MovedLabel& label : part.labels) {
            const std::size_t index = travellers_.size();
            travellers_.push_back({&label, {}, {}, {}, label.place});
            if (!label.number.empty()) {
                by_number_.emplace(label.number, index);
            }
            by_place_.add(label.place, index);
        }
    }

    void take_signature(Record& record, std::int64_t line) {
        if (!record.word(6).found() || !record.word(7).found()) {
            return;
        }
        const Candidate candidate{line, read_position(record), 0};
        const auto [first, last] = by_number_.equal_range(std::string(trim(record.word(7).text)));
        std::for_each(first, last, [&](const auto& entry) {
            enter(travellers_[entry.second].by_number, candidate);
        });
        by_place_.near(candidate.place,
                       [&](std::size_t index) { enter(travellers_[index].by_place, candidate); });
    }

    /// All signatures are known: labels of points find theirs, those of changes their point.
    void settle_points(LabelMatches& matches, std::vector<const MovedLabel*>& lost) {
        for (Traveller& traveller : travellers_) {
            settle(traveller, traveller.by_number, matches);
        }
        for (Traveller& traveller : travellers_) {
            if (traveller.by_number.empty()) {
                traveller.number_gone = !traveller.label->number.empty();
                settle(traveller, traveller.by_place, matches);
            }
            if (is_point(traveller) && traveller.settled) {
                ++matches.points;
                matches.by_place += traveller.number_gone ? 1 : 0;
            } else if (is_point(traveller)) {
                lost.push_back(traveller.label);
            }
        }
        for (std::size_t i = 0; i < travellers_.size(); ++i) {
            if (!is_point(travellers_[i])) {
                by_target_.add(travellers_[i].target, i);
            }
        }
    }

    void take_change(Record& record, std::int64_t line) {
        const auto change = changes_.take(record);
        if (!change) {
            return;
        }
        by_target_.near(change->place, [&](std::size_t index) {
            const MovedLabel& label = *travellers_[index].label;
            const bool same_kind = is_height(change->kind) == is_height(label.kind);
            const bool same_epoch = label.epoch_text.empty()
                                        ? change->epoch == label.epoch
                                        : change->epoch_text == label.epoch_text;
            if (same_kind && same_epoch) {
                kinds_[line] = change->kind;
                travellers_[index].epochs.push_back({line, change->place, change->epoch});
            }
        });
    }

    void settle_changes(LabelMatches& matches, std::vector<const MovedLabel*>& lost) {
        for (const Traveller& traveller : travellers_) {
            if (is_point(traveller)) {
                continue;
            }
            const Candidate* const chosen = free_epoch(traveller, matches);
            if (chosen == nullptr) {
                lost.push_back(traveller.label);
                continue;
            }
            matches.edits[chosen->line] = {kinds_[chosen->line], traveller.label->offset};
            ++matches.epochs;
            matches.by_place += traveller.number_gone ? 1 : 0;
        }
    }

 private:
    static bool is_point(const Traveller& traveller) {
        return traveller.label->kind == ChangeRecord::none;
    }
    static bool is_height(ChangeRecord kind) {
        return kind == ChangeRecord::hoehe || kind == ChangeRecord::hoehe_epoche;
    }

    /// Of several records of one place the last counts, as for every reader.
    static void enter(std::vector<Candidate>& candidates, const Candidate& candidate) {
        const auto same = std::find_if(candidates.begin(), candidates.end(),
                                       [&candidate](const Candidate& other) {
                                           return other.place.rechts == candidate.place.rechts &&
                                                  other.place.hoch == candidate.place.hoch;
                                       });
        if (same == candidates.end()) {
            candidates.push_back(candidate);
        } else {
            *same = candidate;
        }
    }

    /// The nearest candidate becomes the target; the label of a point takes only a record that no
    /// other label has.
    static void settle(Traveller& traveller, const std::vector<Candidate>& candidates,
                       LabelMatches& matches) {
        const bool point = is_point(traveller);
        const Candidate* nearest = nullptr;
        double least = std::numeric_limits<double>::infinity();
        for (const Candidate& candidate : candidates) {
            const double away = distance(candidate.place, traveller.label->place);
            if (away < least && !(point && matches.edits.contains(candidate.line))) {
                least = away;
                nearest = &candidate;
            }
        }
        if (nearest == nullptr) {
            return;
        }
        traveller.target = nearest->place;
        traveller.settled = true;
        if (point) {
            matches.edits[nearest->line] = {ChangeRecord::none, traveller.label->offset};
        }
    }

    /// The same epoch if there are several of one text, else the first.
    static const Candidate* free_epoch(const Traveller& traveller, const LabelMatches& matches) {
        const Candidate* chosen = nullptr;
        for (const Candidate& candidate : traveller.epochs) {
            if (matches.edits.contains(candidate.line)) {
                continue;
            }
            const bool same_number = candidate.epoch == traveller.label->epoch;
            if (chosen == nullptr || (same_number && chosen->epoch != traveller.label->epoch)) {
                chosen = &candidate;
            }
        }
        return chosen;
    }

    std::vector<Traveller> travellers_;
    std::unordered_multimap<std::string, std::size_t> by_number_;
    PlaceIndex by_place_;
    PlaceIndex by_target_;
    ChangeLabels changes_;
    std::unordered_map<std::int64_t, ChangeRecord> kinds_;
};

}  // namespace

bool has_parts(const std::string& path, LongWork* work) {
    RecordSource source(path, "N", work);
    std::string_view line;
    while (source.next(line)) {
        const Record record(line);
        if (record.initial() == 'N' && record.is(keyword::netzteil)) {
            return true;
        }
    }
    return false;
}

LabelMatches match_labels(const HandWork& hand_work, const std::string& path, LongWork* work) {
    LabelMatches matches;
    std::vector<PartMatching> parts(hand_work.parts.begin(), hand_work.parts.end());
    matches.lost.resize(parts.size());
    const bool one_part = !hand_work.has_parts && !parts.empty() && !has_parts(path, work);
    const auto scan = [&](std::string_view initials, const auto& take) {
        RecordSource source(path, initials, work);
        PartMatching* part = one_part ? &parts[0] : nullptr;
        std::string_view line;
        while (source.next(line)) {
            Record record(line);
            if (record.initial() == 'N' && record.is(keyword::netzteil)) {
                const PartWork* const found = hand_work.find(record.rest());
                part = found == nullptr || !hand_work.has_parts
                           ? nullptr
                           : &parts[static_cast<std::size_t>(found - hand_work.parts.data())];
            } else if (part != nullptr) {
                take(*part, record, source.line_number());
            }
        }
    };
    scan("NP", [](PartMatching& part, Record& record, std::int64_t line) {
        if (record.is(keyword::punktsignatur)) {
            part.take_signature(record, line);
        }
    });
    for (std::size_t i = 0; i < parts.size(); ++i) {
        parts[i].settle_points(matches, matches.lost[i]);
    }
    scan("NLH", [](PartMatching& part, Record& record, std::int64_t line) {
        part.take_change(record, line);
    });
    for (std::size_t i = 0; i < parts.size(); ++i) {
        parts[i].settle_changes(matches, matches.lost[i]);
    }
    return matches;
}

}  // namespace veldra
