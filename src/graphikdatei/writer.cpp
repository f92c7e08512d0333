#include "graphikdatei/writer.h"

#include <utility>
#include <vector>

#include "graphikdatei/change_records.h"
#include "graphikdatei/keywords.h"
#include "graphikdatei/line_reader.h"
#include "graphikdatei/part_filter.h"
#include "graphikdatei/working_copies.h"
#include "graphikdatei/written_records.h"
#include "model/long_work.h"
#include "os/files.h"
#include "text/fatal_error.h"
#include "text/tokens.h"

namespace veldra {

namespace {

/// The part's block has taken the place of this record.
bool replaced_by_block(Record& record) {
    switch (record.initial()) {
        case 'T':
            return record.is(keyword::titel2) || record.is(keyword::titel3) ||
                   record.is(keyword::titel4);
        case 'O':
            return record.is(keyword::objekte);
        case 'P':
            return record.is(keyword::punktsignatur) && record.word(6).found();
        case 'N':
            return record.is(keyword::numbezoffset);
        default:
            return false;
    }
}

void write_plot_scale(ReplacedFile& out, const Session& session, const PlotSettings& plot) {
    if (const auto record = plot_scale_record(plot)) {
        write_record(out, session, *record);
    }
}

/// A file-wide record or a part's scale, which the final form states anew.
bool restated_in_final_form(const Record& record) {
    switch (record.initial()) {
        case 'V':
            return record.is(keyword::verfahrenlegende);
        case 'T':
            return record.is(keyword::titel1);
        case 'M':
            return record.is(keyword::massstabgrundriss) || record.is(keyword::massstabvektoren);
        default:
            return false;
    }
}

void copy_in_final_form(const Session& session, LineReader& in, ReplacedFile& out) {
    std::int32_t part = 0;
    std::string_view line;
    while (in.next(line)) {
        const Record record(line);
        if (!record.has_keyword()) {
            continue;
        }
        if (record.initial() == 'N' && record.is(keyword::netzteil)) {
            write_line(out, line);
            ++part;
            if (part <= session.netz.count()) {
                write_plot_scale(out, session, plot_settings_of(session.netz[part]));
            }
        } else if (!restated_in_final_form(record)) {
            write_line(out, line);
        }
    }
}

}  // namespace

void close_document(Session& session) {
    session.arbeitsdatei_suffix.clear();
    session.arbeitskopien.clear();
    session.arbeitsordner.reset();
    WindowState& window = session.window;
    for (const MenuItem item : {MenuItem::m_torvel_objekte, MenuItem::m_torvel_ansicht,
                                MenuItem::m_torvel_plotten, MenuItem::m_torvel_optionen}) {
        window[item].enabled = false;
    }
    for (const ToolButton button :
         {ToolButton::lupe_plus, ToolButton::lupe_minus, ToolButton::schiebe_rechts,
          ToolButton::schiebe_links, ToolButton::schiebe_hoch, ToolButton::schiebe_runter,
          ToolButton::schiebe_original, ToolButton::plot_ein, ToolButton::plot_aus}) {
        window[button].enabled = false;
    }
    session.datei_geladen = 0;
}

void arbeitskopie_schreiben(Session& session) {
    if (session.datei_geladen != 1) {
        return;
    }
    const WorkingCopyName next = next_working_copy(session);
    write_working_copy(session, next.path());
    session.arbeitsdatei_basis = next.base;
    session.arbeitsdatei_suffix = next.suffix;
}

namespace {

/// Copies the working file with the state of the current part in its place.
class PartMerger {
 public:
    PartMerger(const Session& session, ReplacedFile& out, FollowedWriting& writing)
        : session_(session),
          out_(out),
          writing_(writing),
          name_(session.netz[session.netz_aktuell].netz_name),
          state_(session.netz_aktuell == 0 ? State::block_due : State::outside) {}

    void take(std::string_view line) {
        if (state_ == State::block_due) {
            write_part_block(out_, session_, [this] { writing_.goes_on(); });
            state_ = State::inside;
            block_written_ = true;
        }
        Record record(line);
        if (!record.has_keyword()) {
            return;
        }
        if (record.initial() == 'N' && record.is(keyword::netzteil)) {
            const bool ours = session_.netz_aktuell > 0 && record.rest() == name_;
            state_ = ours ? State::block_due : State::outside;
            parts_found_ = true;
            write_line(out_, line);
        } else if (state_ == State::outside) {
            write_line(out_, line);
        } else if (!replaced_by_block(record)) {
            write_inside(record, line);
        }
    }

    /// The state of the part stands where its readers look for it. A part of the very last line has
    /// no block, and nothing to state.
    [[nodiscard]] bool complete() const {
        const bool parted = session_.netz_aktuell == 0 && parts_found_;
        const bool empty =
            session_.pu.count() == 0 && session_.lin.count() == 0 && session_.nuoff.count() == 0;
        return empty || (block_written_ && !parted);
    }

 private:
    enum class State : std::uint8_t { outside, block_due, inside };

    /// Changes whose labels were moved get the offsets of these; all else is copied as it stands.
    void write_inside(const Record& record, std::string_view line) {
        const EpochOffsets& moved = session_.epochen_bez;
        if (!moved.empty()) {
            const ChangeRecord kind = changes_.take(record);
            const auto offset = moved.find(changes_.number());
            if (kind != ChangeRecord::none && offset != moved.end()) {
                write_line(out_, with_label_offset(line, kind, offset->second));
                return;
            }
        }
        write_line(out_, line);
    }

    const Session& session_;
    ReplacedFile& out_;
    FollowedWriting& writing_;
    const std::string& name_;
    State state_;
    ChangeRecords changes_;
    bool block_written_ = false;
    bool parts_found_ = false;
};

}  // namespace

void write_working_copy(Session& session, const std::string& target) {
    if (session.datei_geladen != 1) {
        return;
    }
    FollowedWriting writing(session.work);
    LineReader in(working_path(session), &writing);
    const bool replaces = is_own_copy(session, target);
    ReplacedFile out(target, replaces ? NamedBy::program : NamedBy::program_as_new,
                     session.graphikdatei);
    PartMerger merger(session, out, writing);
    std::string_view line;
    while (in.next(line)) {
        merger.take(line);
    }
    if (!merger.complete()) {
        throw FatalError(working_path(session) +
                         ": Das angezeigte Netzteil steht nicht mehr in der Datei.");
    }
    out.commit();
    count_as_own_copy(session, target);
    writing.finish();
}

void write_final_form(Session& session, const std::string& target) {
    if (session.datei_geladen != 1) {
        return;
    }
    if (session.netz.count() >= 1) {
        store_plot_settings(session);
    }
    FollowedWriting writing(session.work);
    LineReader in(working_path(session), &writing);
    const bool copy = is_own_copy(session, target);
    ReplacedFile out(target, copy ? NamedBy::program : NamedBy::user,
                     copy ? session.graphikdatei : std::string());
    write_record(out, session, "VerfahrenLegende " + session.titel[0].getTitelText());
    write_record(out, session, vector_scale_record(session));
    if (session.netz_aktuell == 0) {
        write_plot_scale(out, session, session.plot);
    }
    copy_in_final_form(session, in, out);
    out.commit();
    if (copy) {
        count_as_own_copy(session, target);
    }
    writing.finish();
}

void endfassung_schreiben(Session& session, const std::string& target) {
    if (session.datei_geladen != 1) {
        return;
    }
    write_final_form(session, target);
    const std::vector<OwnCopy> copies = std::exchange(session.arbeitskopien, {});
    close_document(session);
    remove_copies(copies);
}

void endfassung_schreiben(Session& session) {
    endfassung_schreiben(session, session.graphikdatei);
}

}  // namespace veldra
