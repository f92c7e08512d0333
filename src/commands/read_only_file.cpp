#include "commands/read_only_file.h"

#include <bit>
#include <string_view>

#include "graphikdatei/working_copies.h"
#include "graphikdatei/written_records.h"
#include "os/files.h"

namespace veldra {

namespace {

/// A number that stands for a row of values; another row has another one, but for chance.
class Fingerprint {
 public:
    void add(std::string_view text) {
        for (const char byte : text) {
            add_byte(static_cast<unsigned char>(byte));
        }
        add(static_cast<std::int64_t>(text.size()));
    }
    void add(std::int64_t value) {
        constexpr int bits_of_byte = 8;
        for (std::size_t i = 0; i < sizeof value; ++i) {
            add_byte(static_cast<unsigned char>(value));
            value >>= bits_of_byte;
        }
    }
    void add(double value) { add(std::bit_cast<std::int64_t>(value)); }
    [[nodiscard]] std::uint64_t value() const { return value_; }

 private:
    void add_byte(unsigned char byte) {
        constexpr std::uint64_t prime = 1099511628211U;
        value_ = (value_ ^ byte) * prime;
    }
    std::uint64_t value_ = 14695981039346656037U;
};

void add_selection(Fingerprint& print, const ObjectSelection& obj) {
    for (const std::int32_t code :
         {std::int32_t{obj.obj_pube}, std::int32_t{obj.obj_pusi}, std::int32_t{obj.obj_puwe},
          std::int32_t{obj.obj_epbe}, std::int32_t{obj.obj_test_restkl}, std::int32_t{obj.obj_nube},
          std::int32_t{obj.obj_nbez}, std::int32_t{obj.obj_beob}, std::int32_t{obj.obj_test_beob},
          std::int32_t{obj.obj_test}, std::int32_t{obj.obj_verw}, std::int32_t{obj.obj_bezu},
          obj.obj_bezu_elli, obj.obj_bezu_abbi, obj.obj_nube_meridian}) {
        print.add(std::int64_t{code});
    }
}

/// As the file would hold them: what is counted or measured anew each time is no part of it.
void add_plot_settings(Fingerprint& print, const PlotSettings& plot) {
    print.add(plot_scale_record(plot).value_or(""));
}

/// All that writing the file back would put into it from the session.
std::uint64_t written_state(const Session& session) {
    Fingerprint print;
    for (const Titelzeile& titel : session.part.titel) {
        print.add(titel.getTitelText());
    }
    for (const double scale : session.vektor_massstab) {
        print.add(scale);
    }
    add_selection(print, session.part.obj);
    add_plot_settings(print, session.part.plot);
    for (std::int32_t i = 1; i <= session.netz.count(); ++i) {
        if (i != session.part.netz_aktuell) {
            add_plot_settings(print, plot_settings_of(session.netz[i]));
        }
    }
    for (std::int32_t i = 1; i <= session.part.pu.count(); ++i) {
        print.add(session.part.pu[i].pu_bez_rechts);
        print.add(session.part.pu[i].pu_bez_hoch);
    }
    for (std::int32_t i = 1; i <= session.part.nuoff.count(); ++i) {
        print.add(session.part.nuoff[i].nuoff_bez);
        print.add(session.part.nuoff[i].nuoff_rechts);
        print.add(session.part.nuoff[i].nuoff_hoch);
    }
    return print.value();
}

}  // namespace

void ReadOnlyFile::begin(Session& session) {
    const std::string& path = session.graphikdatei;
    end();
    read_only_ = !file_replaceable(path);
    if (read_only_ || !folder_writable(folder_of_file(path))) {
        keep_copies_aside(session);
    }
}

void ReadOnlyFile::take_as_read(const Session& session) {
    if (read_only_) {
        as_read_ = written_state(session);
    }
}

void ReadOnlyFile::note_changes(const Session& session) {
    changed_ = changed_ || (read_only_ && written_state(session) != as_read_);
}

bool ReadOnlyFile::has_changed(const Session& session) {
    note_changes(session);
    return changed_;
}

}  // namespace veldra
