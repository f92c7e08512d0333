#include "graphikdatei/take_over.h"

#include <algorithm>
#include <map>

#include "graphikdatei/working_copies.h"
#include "graphikdatei/writer.h"
#include "graphikdatei/written_records.h"
#include "model/long_work.h"
#include "os/files.h"

namespace veldra {

namespace {

MovedLabel label_of(const PointRow& row) {
    MovedLabel label;
    label.place = {row.pu_rechts, row.pu_hoch};
    label.number = row.pu_bez;
    label.offset.rechts = row.pu_bez_rechts;
    label.offset.hoch = row.pu_bez_hoch;
    return label;
}

/// A label that was moved on the picture replaces what the file says of it.
void add_moved_changes(const Session& session, std::vector<MovedLabel>& labels) {
    for (const auto& [record, offset] : session.epochen_bez) {
        std::erase_if(labels, [number = record](const MovedLabel& label) {
            return label.kind != ChangeRecord::none && label.record == number;
        });
        MovedLabel label;
        label.kind = offset.hoehe ? ChangeRecord::hoehe : ChangeRecord::lage;
        label.place = {offset.pu_rechts, offset.pu_hoch};
        label.epoch_text = offset.pu_bez;
        label.epoch = offset.pu_epoche;
        label.record = record;
        label.offset = offset;
        const std::int32_t point = session.pu.signature_at(offset.pu_rechts, offset.pu_hoch);
        label.number = point > 0 ? session.pu[point].pu_bez : std::string();
        labels.push_back(std::move(label));
    }
}

void take_part_in_view(const Session& session, PartWork& part) {
    std::erase_if(part.labels,
                  [](const MovedLabel& label) { return label.kind == ChangeRecord::none; });
    for (std::int32_t i = 1; i <= session.pu.pu_anzahl_signatur; ++i) {
        const PointRow& row = session.pu[i];
        if (row.pu_signatur != 0 && row.pu_bez_rechts != 0 && !row.pu_bez.empty()) {
            part.labels.push_back(label_of(row));
        }
    }
    add_moved_changes(session, part.labels);
    part.districts.clear();
    for (std::int32_t i = 1; i <= session.nuoff.count(); ++i) {
        part.districts.push_back(session.nuoff[i]);
    }
    for (std::size_t i = 1; i < session.titel.size(); ++i) {
        part.titles[i] = session.titel[i].getTitelText();
    }
    part.selection = selection_record(session.obj);
}

void take_plot_settings(const Session& session, HandWork& hand_work) {
    const auto set = [&hand_work](const std::string& name, std::size_t time,
                                  const PlotSettings& plot) {
        std::vector<std::string>& scales = hand_work.part(name).plot_scales;
        scales.resize(std::max(scales.size(), time + 1));
        scales[time] = plot_scale_record(plot).value_or("");
    };
    if (session.netz.count() == 0) {
        set("", 0, session.plot);
        return;
    }
    std::map<std::string, std::size_t> times;
    for (std::int32_t i = 1; i <= session.netz.count(); ++i) {
        const NetworkPartRow& row = session.netz[i];
        set(row.netz_name, times[row.netz_name]++,
            i == session.netz_aktuell ? session.plot : plot_settings_of(row));
    }
}

}  // namespace

HandWork current_hand_work(const Session& session, const HandWork& as_read, LongWork* work) {
    HandWork hand_work =
        session.arbeitsdatei_suffix.empty() ? as_read : read_hand_work(working_path(session), work);
    hand_work.has_parts = session.netz.count() > 0;
    hand_work.title = session.titel[0].getTitelText();
    forget_title_of_path(hand_work, {session.graphikdatei});
    hand_work.vector_scales = vector_scale_record(session);
    take_plot_settings(session, hand_work);
    take_part_in_view(session, hand_work.part(session.netz[session.netz_aktuell].netz_name));
    return hand_work;
}

TransferReport transfer_into_working_copy(Session& session, const HandWork& hand_work,
                                          const std::string& source) {
    constexpr int readings = 5;  // twice for its parts, twice for labels, once for all of it
    FollowedWriting writing(session.work);
    writing.expect_readings(readings);
    const WorkingCopyName next = next_working_copy(session);
    ReplacedFile out(next.path(),
                     is_own_copy(session, next.path()) ? NamedBy::program : NamedBy::program_as_new,
                     session.graphikdatei);
    TransferReport report = transfer_hand_work(hand_work, source, out, &writing);
    out.commit();
    count_as_own_copy(session, next.path());
    session.arbeitsdatei_basis = next.base;
    session.arbeitsdatei_suffix = next.suffix;
    writing.finish();
    return report;
}

TransferReport take_over_from(Session& session, const std::string& path) {
    HandWork hand_work = read_hand_work(path);
    forget_title_of_path(hand_work, {path, session.graphikdatei});
    arbeitskopie_schreiben(session);
    write_final_form(session, working_path(session));
    return transfer_into_working_copy(session, hand_work, working_path(session));
}

}  // namespace veldra
