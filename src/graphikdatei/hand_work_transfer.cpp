#include "graphikdatei/hand_work_transfer.h"

#include <algorithm>
#include <unordered_map>

#include <fmt/format.h>

#include "graphikdatei/keywords.h"
#include "graphikdatei/label_matching.h"
#include "graphikdatei/line_reader.h"
#include "graphikdatei/written_records.h"
#include "os/files.h"
#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra {

namespace {

std::string offset_text(double offset) {
    return zahl_text(offset, "0.0", "");
}

/// The text of a part's name in a message.
std::string part_text(const HandWork& hand_work, const PartWork& part) {
    return hand_work.has_parts ? fmt::format("Netzteil \"{}\"", to_utf8(part.name))
                               : std::string("Netzteil ohne Namen");
}

std::string label_text(const MovedLabel& label) {
    const std::string point =
        label.number.empty() ? fmt::format("an {} {}", zahl_text(label.place.rechts, "0.000", ""),
                                           zahl_text(label.place.hoch, "0.000", ""))
                             : fmt::format("\"{}\"", to_utf8(label.number));
    if (label.kind == ChangeRecord::none) {
        return "Beschriftung des Punktes " + point;
    }
    const std::string epoch = label.epoch_text.empty()
                                  ? fmt::format("Epoche {}", label.epoch + 1)
                                  : fmt::format("Epoche \"{}\"", to_utf8(label.epoch_text));
    return fmt::format("Beschriftung des Punktes {}, {}", point, epoch);
}

std::int64_t filled(const auto& texts) {
    return std::count_if(texts.begin(), texts.end(),
                         [](const std::string& text) { return !text.empty(); });
}

/// Writes a file with the hand's work of another one.
class Transfer {
 public:
    Transfer(const HandWork& hand_work, LabelMatches matches, ReplacedFile& out)
        : hand_work_(hand_work), matches_(std::move(matches)), out_(out) {
        times_opened_.resize(hand_work.parts.size());
    }

    void write(LineReader& in, bool source_has_parts) {
        write_whole_file_records();
        if (!source_has_parts && !hand_work_.has_parts && !hand_work_.parts.empty()) {
            open(&hand_work_.parts.front());
        }
        std::string_view line;
        while (in.next(line)) {
            Record record(line);
            if (record.initial() == 'N' && record.is(keyword::netzteil)) {
                write_line(out_, line);
                open(hand_work_.has_parts ? hand_work_.find(record.rest()) : nullptr);
            } else if (const auto edit = matches_.edits.find(in.line_number());
                       edit != matches_.edits.end()) {
                write_line(out_, edited(line, edit->second));
            } else if (!replaced(record)) {
                write_line(out_, line);
            }
        }
        tell_what_is_lost();
    }

    TransferReport take_report() {
        report_.points = matches_.points;
        report_.epochs = matches_.epochs;
        report_.by_place = matches_.by_place;
        return std::move(report_);
    }

 private:
    void write_whole_file_records() {
        if (!hand_work_.title.empty()) {
            write_line(out_, "VerfahrenLegende " + hand_work_.title);
            ++report_.titles;
        }
        if (!hand_work_.vector_scales.empty()) {
            write_line(out_, hand_work_.vector_scales);
            ++report_.vector_scales;
        }
    }

    /// A part begins: its own records come first. `part` is null if the hand's work has none.
    void open(const PartWork* part) {
        part_ = part;
        plot_replaced_ = false;
        if (part == nullptr) {
            return;
        }
        std::size_t& opened = times_opened();
        if (opened < part->plot_scales.size() && !part->plot_scales[opened].empty()) {
            write_line(out_, part->plot_scales[opened]);
            plot_replaced_ = true;
            ++report_.plots;
        }
        if (opened++ == 0) {
            write_part_records(*part);
        }
    }

    void write_part_records(const PartWork& part) {
        for (std::size_t i = 1; i < part.titles.size(); ++i) {
            if (!part.titles[i].empty()) {
                write_line(out_, title_record(i + 1, part.titles[i]));
                ++report_.titles;
            }
        }
        if (!part.selection.empty()) {
            write_line(out_, part.selection);
            ++report_.selections;
        }
        for (const NubezOffsetRow& row : part.districts) {
            write_line(out_, district_label_record(row));
            ++report_.districts;
        }
    }

    static std::string edited(std::string_view line, const LabelEdit& edit) {
        constexpr int label_of_signature = 7;
        return edit.kind == ChangeRecord::none
                   ? with_offsets(line, label_of_signature, offset_text(edit.offset.rechts),
                                  offset_text(edit.offset.hoch))
                   : with_label_offset(line, edit.kind, edit.offset);
    }

    /// A record of the hand's work has taken the place of this one.
    [[nodiscard]] bool replaced(Record& record) const {
        switch (record.initial()) {
            case 'V':
                return !hand_work_.title.empty() && record.is(keyword::verfahrenlegende);
            case 'M':
                return (plot_replaced_ && record.is(keyword::massstabgrundriss)) ||
                       (!hand_work_.vector_scales.empty() &&
                        !record.is(keyword::massstabgrundriss) &&
                        record.is(keyword::massstabvektoren));
            case 'T': {
                const int line = title_line(record);
                return part_ != nullptr && line > 0 &&
                       !part_->titles[static_cast<std::size_t>(line)].empty();
            }
            case 'O':
                return part_ != nullptr && !part_->selection.empty() &&
                       record.is(keyword::objekte) && record.word(14).found();
            case 'N':
                return part_ != nullptr && record.is(keyword::numbezoffset) && has_district(record);
            default:
                return false;
        }
    }

    [[nodiscard]] bool has_district(Record& record) const {
        const auto label = district_label(record);
        return label && std::any_of(part_->districts.begin(), part_->districts.end(),
                                    [&label](const NubezOffsetRow& row) {
                                        return row.nuoff_bez == label->nuoff_bez;
                                    });
    }

    std::size_t& times_opened() {
        return times_opened_[static_cast<std::size_t>(part_ - hand_work_.parts.data())];
    }

    void lose(std::int64_t count, std::string text) {
        report_.not_taken += count;
        report_.lost.push_back(std::move(text));
    }

    void tell_what_is_lost() {
        for (std::size_t i = 0; i < hand_work_.parts.size(); ++i) {
            const PartWork& part = hand_work_.parts[i];
            const std::string name = part_text(hand_work_, part);
            if (times_opened_[i] == 0) {
                lose_part(part, name);
                continue;
            }
            for (const MovedLabel* label : matches_.lost[i]) {
                lose(1, name + ": " + label_text(*label));
            }
            for (std::size_t n = times_opened_[i]; n < part.plot_scales.size(); ++n) {
                if (!part.plot_scales[n].empty()) {
                    lose(1, fmt::format("{}: Ploteinstellungen, {}. Stelle", name, n + 1));
                }
            }
        }
    }

    void lose_part(const PartWork& part, const std::string& name) {
        std::vector<std::string> kinds;
        std::int64_t all = 0;
        const auto add = [&](std::int64_t count, const char* kind) {
            if (count > 0) {
                kinds.push_back(fmt::format("{}: {}", kind, count));
                all += count;
            }
        };
        add(static_cast<std::int64_t>(part.labels.size() + part.districts.size()),
            "Beschriftungen");
        add(part.selection.empty() ? 0 : 1, "Auswahl");
        add(filled(part.titles), "Titelzeilen");
        add(filled(part.plot_scales), "Ploteinstellungen");
        if (all > 0) {
            lose(all, fmt::format("{} gibt es nicht mehr ({})", name, fmt::join(kinds, ", ")));
        }
    }

    const HandWork& hand_work_;
    LabelMatches matches_;
    ReplacedFile& out_;
    TransferReport report_;
    std::vector<std::size_t> times_opened_;  ///< of each part of the hand's work
    const PartWork* part_ = nullptr;
    bool plot_replaced_ = false;
};

}  // namespace

TransferReport transfer_hand_work(const HandWork& hand_work, const std::string& source,
                                  ReplacedFile& out, LongWork* work) {
    Transfer transfer(hand_work, match_labels(hand_work, source, work), out);
    const bool source_has_parts = has_parts(source, work);
    LineReader in(source, work);
    transfer.write(in, source_has_parts);
    return transfer.take_report();
}

std::string transfer_text(const TransferReport& report, std::size_t most_names) {
    std::string text;
    const auto add = [&text](const char* what, std::int64_t count) {
        if (count > 0) {
            text += fmt::format("{}: {}\n", what, count);
        }
    };
    add("Beschriftungen von Punkten", report.points);
    add("Beschriftungen von Epochen", report.epochs);
    add("  davon nach dem Ort, weil es die Punktnummer nicht mehr gibt", report.by_place);
    add("Beschriftungen von Nummerierungsbezirken", report.districts);
    add("Auswahl der Objekte, Netzteile", report.selections);
    add("Titelzeilen", report.titles);
    add("Ploteinstellungen, Netzteile", report.plots);
    add("Maßstäbe der Vektoren", report.vector_scales);
    text = text.empty() ? "Übernommen: nichts\n" : "Übernommen:\n" + text;
    if (report.not_taken > 0) {
        text += fmt::format("Nicht übernommen: {}\n", report.not_taken);
        const std::size_t named = std::min(most_names, report.lost.size());
        for (std::size_t i = 0; i < named; ++i) {
            text += report.lost[i] + "\n";
        }
        if (named < report.lost.size()) {
            text += fmt::format("und {} weitere Zeilen\n", report.lost.size() - named);
        }
    }
    return text;
}

}  // namespace veldra
