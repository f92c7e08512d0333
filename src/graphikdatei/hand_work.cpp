#include "graphikdatei/hand_work.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <unordered_map>

#include "graphikdatei/keywords.h"
#include "model/long_work.h"
#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra {

namespace {

/// Places are one and the same only if both numbers are.
struct PlaceHash {
    std::size_t operator()(const Position& place) const {
        constexpr std::uint64_t odd = 0x9E3779B97F4A7C15U;
        const auto bits = [](double value) { return std::bit_cast<std::uint64_t>(value + 0.0); };
        return static_cast<std::size_t>((bits(place.rechts) * odd) ^ bits(place.hoch));
    }
};
struct SamePlace {
    bool operator()(const Position& a, const Position& b) const {
        return a.rechts == b.rechts && a.hoch == b.hoch;
    }
};
using LabelsByPlace = std::unordered_map<Position, MovedLabel, PlaceHash, SamePlace>;

/// The moved labels of a part while its records are read.
struct PartLabels {
    LabelsByPlace points;
    ChangeLabels changes;
    std::vector<MovedLabel> moved_changes;
};

std::string own_record(std::string_view keyword, const Record& record) {
    return std::string(keyword) + ' ' + std::string(record.rest());
}

/// A record that a reader takes as a whole; one with numbers beyond their fields would end it.
bool is_plot_scale(Record& record) {
    constexpr int first_integer = 5;
    constexpr int last_integer = 8;
    bool fits = record.word(2).found() && record.number(2) >= 1;
    for (int n = first_integer; n <= last_integer; ++n) {
        fits = fits && to_int16(record.number(n)).has_value();
    }
    return fits;
}

class HandWorkReader {
 public:
    explicit HandWorkReader(HandWork& work) : work_(work) { open(""); }

    void read(Record& record) {
        if (record.initial() == 'N' && record.is(keyword::netzteil)) {
            read_part(record);
            return;
        }
        switch (record.initial()) {
            case 'N':
                if (record.is(keyword::numbezoffset)) {
                    take_district(district_label(record));
                }
                break;
            case 'V':
                if (record.is(keyword::verfahrenlegende) && record.has_rest()) {
                    work_.title = record.rest();
                }
                break;
            case 'M':
                read_scale(record);
                break;
            case 'O':
                if (record.is(keyword::objekte) && record.word(14).found()) {
                    part().selection = own_record("Objekte", record);
                }
                break;
            case 'T':
                if (const int line = title_line(record); line > 0 && record.has_rest()) {
                    part().titles[static_cast<std::size_t>(line)] = record.rest();
                }
                break;
            case 'P':
                read_signature(record);
                break;
            default:
                break;
        }
        read_change(record);
    }

    /// Hands the labels over to their parts; those of changes learn the numbers of their points.
    void finish(const std::string& path, LongWork* work) {
        const bool changes_moved =
            std::any_of(labels_.begin(), labels_.end(),
                        [](const PartLabels& part) { return !part.moved_changes.empty(); });
        if (changes_moved) {
            name_changes(path, work);
        }
        for (std::size_t i = 0; i < labels_.size(); ++i) {
            std::vector<MovedLabel>& labels = work_.parts[i].labels;
            for (auto& [place, label] : labels_[i].points) {
                if (label.offset.rechts != 0 && !label.number.empty()) {
                    labels.push_back(std::move(label));
                }
            }
            std::sort(labels.begin(), labels.end(),
                      [](const MovedLabel& a, const MovedLabel& b) { return a.number < b.number; });
            std::move(labels_[i].moved_changes.begin(), labels_[i].moved_changes.end(),
                      std::back_inserter(labels));
        }
    }

 private:
    PartWork& part() { return work_.parts[current_]; }

    void open(std::string_view name) {
        current_ = static_cast<std::size_t>(&work_.part(name) - work_.parts.data());
        labels_.resize(work_.parts.size());
        part().plot_scales.emplace_back();
    }

    void read_part(const Record& record) {
        if (!work_.has_parts) {
            // What stands before the first part belongs to none.
            work_.has_parts = true;
            work_.parts.clear();
            labels_.clear();
        }
        open(record.rest());
    }

    void take_district(std::optional<NubezOffsetRow> label) {
        if (!label) {
            return;
        }
        std::vector<NubezOffsetRow>& districts = part().districts;
        const auto same = std::find_if(
            districts.begin(), districts.end(),
            [&label](const NubezOffsetRow& row) { return row.nuoff_bez == label->nuoff_bez; });
        if (same == districts.end()) {
            districts.push_back(std::move(*label));
        } else {
            *same = std::move(*label);
        }
    }

    void read_scale(Record& record) {
        if (record.is(keyword::massstabgrundriss)) {
            if (is_plot_scale(record)) {
                part().plot_scales.back() = own_record("Ma\xDFstabGrundriss", record);
            }
        } else if (record.is(keyword::massstabvektoren) && record.word(7).found()) {
            work_.vector_scales = own_record("Ma\xDFstabVektoren", record);
        }
    }

    /// Points are kept from the first time that their label is moved; a later record of the same
    /// point may move it again, or back.
    void read_signature(Record& record) {
        if (!record.is(keyword::punktsignatur) || !record.word(6).found()) {
            return;
        }
        LabelsByPlace& points = labels_[current_].points;
        const bool with_offsets = record.word(9).found();
        const bool moved = with_offsets && record.number(8) != 0;
        if (!moved && points.empty()) {
            return;
        }
        const Position place = read_position(record);
        if (!moved && !points.contains(place)) {
            return;
        }
        MovedLabel& label = points[place];
        label.place = place;
        if (const Word number = record.word(7); number.found()) {
            label.number = trim(number.text);
        }
        if (with_offsets) {
            label.offset.rechts = record.number(8);
            label.offset.hoch = record.number(9);
        }
    }

    void read_change(Record& record) {
        PartLabels& labels = labels_[current_];
        if (auto label = labels.changes.take(record); label && label->offset.rechts != 0) {
            labels.moved_changes.push_back(std::move(*label));
        }
    }

    void name_changes(const std::string& path, LongWork* work);

    HandWork& work_;
    std::vector<PartLabels> labels_;  ///< one for each part
    std::size_t current_ = 0;
};

void HandWorkReader::name_changes(const std::string& path, LongWork* work) {
    using Changes = std::unordered_multimap<Position, MovedLabel*, PlaceHash, SamePlace>;
    std::unordered_map<std::string, Changes> by_part;
    for (std::size_t i = 0; i < labels_.size(); ++i) {
        for (MovedLabel& label : labels_[i].moved_changes) {
            by_part[work_.parts[i].name].emplace(label.place, &label);
        }
    }
    RecordSource source(path, "NP", work);
    Changes* changes = work_.has_parts ? nullptr : &by_part[""];
    std::string_view line;
    while (source.next(line)) {
        Record record(line);
        if (record.initial() == 'N' && record.is(keyword::netzteil)) {
            const auto found = by_part.find(std::string(record.rest()));
            changes = found == by_part.end() ? nullptr : &found->second;
        } else if (changes != nullptr && record.is(keyword::punktsignatur) &&
                   record.word(7).found()) {
            const auto [first, last] = changes->equal_range(read_position(record));
            std::for_each(first, last, [&record](const auto& entry) {
                entry.second->number = trim(record.word(7).text);
            });
        }
    }
}

}  // namespace

bool PartWork::empty() const {
    const auto none = [](const auto& texts) {
        return std::all_of(texts.begin(), texts.end(),
                           [](const std::string& text) { return text.empty(); });
    };
    return labels.empty() && districts.empty() && none(titles) && selection.empty() &&
           none(plot_scales);
}

PartWork& HandWork::part(std::string_view name) {
    const auto found = std::find_if(parts.begin(), parts.end(),
                                    [name](const PartWork& part) { return part.name == name; });
    if (found != parts.end()) {
        return *found;
    }
    parts.emplace_back().name = name;
    return parts.back();
}

const PartWork* HandWork::find(std::string_view name) const {
    const auto found = std::find_if(parts.begin(), parts.end(),
                                    [name](const PartWork& part) { return part.name == name; });
    return found == parts.end() ? nullptr : &*found;
}

std::optional<MovedLabel> ChangeLabels::take(Record& record) {
    const ChangeRecord kind = changes_.take(record);
    if (kind == ChangeRecord::none) {
        return std::nullopt;
    }
    if (kind == ChangeRecord::lage || kind == ChangeRecord::hoehe) {
        place_ = read_position(record);
        epoch_ = 0;
    } else {
        ++epoch_;
    }
    MovedLabel label;
    label.kind = kind;
    label.place = place_;
    label.epoch = epoch_;
    label.record = changes_.number();
    const int text = epoch_text_token(kind);
    label.epoch_text = record.word(text).text;
    if (record.word(text + 2).found()) {
        label.offset.rechts = record.number(text + 1);
        label.offset.hoch = record.number(text + 2);
    }
    return label;
}

void forget_title_of_path(HandWork& hand_work, std::initializer_list<std::string_view> paths) {
    const bool is_path = std::any_of(
        paths.begin(), paths.end(),
        [&hand_work](std::string_view path) { return from_utf8(path) == hand_work.title; });
    if (is_path) {
        hand_work.title.clear();
    }
}

HandWork read_hand_work(const std::string& path, LongWork* work) {
    HandWork hand_work;
    HandWorkReader reader(hand_work);
    {
        RecordSource source(path, "NVMOTPLH", work);
        std::string_view line;
        while (source.next(line)) {
            Record record(line);
            reader.read(record);
        }
    }
    reader.finish(path, work);
    return hand_work;
}

}  // namespace veldra
