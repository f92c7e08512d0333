#include "fuzz_support.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include <fmt/format.h>
#include <unistd.h>

#include "graphikdatei/keywords.h"
#include "graphikdatei/line_reader.h"
#include "os/files.h"
#include "text/fatal_error.h"
#include "text/tokens.h"

namespace veldra::fuzz {

namespace {

/// Keywords of the records that a writer may drop, state anew or put elsewhere.
constexpr std::array<std::string_view, 9> rewritten{
    keyword::verfahrenlegende, keyword::massstabgrundriss,
    keyword::massstabvektoren, keyword::titel1,
    keyword::titel2,           keyword::titel3,
    keyword::titel4,           keyword::objekte,
    keyword::numbezoffset};

class ProcessFolder {
 public:
    ProcessFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("veldra-fuzz-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(path_);
    }
    ~ProcessFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ProcessFolder(const ProcessFolder&) = delete;
    ProcessFolder& operator=(const ProcessFolder&) = delete;

    [[nodiscard]] std::string file(const std::string& name) const { return path_ / name; }

 private:
    std::filesystem::path path_;
};

bool may_be_rewritten(const Record& record) {
    return record.is(keyword::punktsignatur) ||
           std::any_of(rewritten.begin(), rewritten.end(),
                       [&](std::string_view name) { return record.is(name); });
}

void add_points(std::string& text, const PointTable& points) {
    for (std::int32_t i = 1; i <= points.count(); ++i) {
        const PointRow& p = points[i];
        text += fmt::format("{} {} '{}' {} {} {} {} {} {} {} {} {} {} {} {} {} {} {} {} {}\n",
                            p.pu_rechts, p.pu_hoch, p.pu_bez, p.pu_bez_hoch, p.pu_bez_rechts,
                            p.pu_signatur, p.pu_art_lage, p.pu_art_hoehe, p.pu_wert_lage,
                            p.pu_wert_hoehe, p.pu_epoche, p.pu_wert_rechts, p.pu_wert_hoch,
                            p.pu_wert_dh, p.pu_ev_lage, p.pu_nv_lage, p.pu_ep_lage, p.pu_ev_hoehe,
                            p.pu_nv_hoehe, p.pu_eh_hoehe);
    }
}

void add_lines(std::string& text, const LineTable& lines) {
    for (std::int32_t i = 1; i <= lines.count(); ++i) {
        const LineRow& l = lines[i];
        text += fmt::format(
            "{} {} {} {} {} {} {} {} {} {} {} {} {} {} {} '{}'\n", l.lin_schluessel.text(),
            l.lin_typ_hin, l.lin_typ_seite, l.lin_typ_rueck, l.lin_klasse_von, l.lin_klasse_nach,
            l.lin_ev_hin, l.lin_nv_hin, l.lin_ep_hin, l.lin_ev_seite, l.lin_nv_seite,
            l.lin_ep_seite, l.lin_ev_rueck, l.lin_nv_rueck, l.lin_ep_rueck, l.lin_fernziel.view());
    }
}

void add_head(std::string& text, const Session& session) {
    for (std::int32_t i = 1; i <= session.netz.count(); ++i) {
        const NetworkPartRow& n = session.netz[i];
        text += fmt::format("'{}' {} {} {} {} {} {} {} {} {} {}\n", n.netz_name, n.netz_massstab,
                            n.netz_ausrichtung, n.netz_heftrand, n.netz_legendenlage,
                            n.netz_blatt_auto, n.netz_blatt_rechts, n.netz_blatt_hoch,
                            n.netz_null_rechts, n.netz_null_hoch, n.netz_plotmarke);
    }
    for (const auto& title : session.titel) {
        text += title.getTitelText() + '\n';
    }
    for (const double scale : session.vektor_massstab) {
        text += fmt::format("{} ", scale);
    }
    for (const auto* maxima : {&session.max_ap, &session.max_np}) {
        for (const Maximum& m : *maxima) {
            text += fmt::format("{} {} {} '{}' '{}'\n", m.wert, m.rechts, m.hoch, m.bez, m.epoche);
        }
    }
}

void add_selection(std::string& text, const ObjectSelection& o) {
    text +=
        fmt::format("{} {} {} {} {} {} {} {} {} {} {} {} {} {} {} {} {}\n", o.obj_pube, o.obj_pusi,
                    o.obj_puwe, o.obj_wert_lage, o.obj_wert_hoehe, o.obj_epbe, o.obj_test_restkl,
                    o.obj_nube, o.obj_nbez, o.obj_beob, o.obj_test_beob, o.obj_test, o.obj_verw,
                    o.obj_bezu, o.obj_bezu_elli, o.obj_bezu_abbi, o.obj_nube_meridian);
}

}  // namespace

void require(bool holds, const char* what) {
    if (!holds) {
        fmt::print(stderr, "does not hold: {}\n", what);
        std::abort();
    }
}

std::string write_file(const std::string& name, std::string_view bytes) {
    static const ProcessFolder folder;
    std::string path = folder.file(name);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    require(out.good(), "the fuzzer can write its files");
    return path;
}

std::string file_bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void reset_session(Session& session, const std::string& path) {
    session.graphikdatei = path;
    session.arbeitsdatei_basis = path;
    session.arbeitsdatei_suffix.clear();
    session.arbeitskopien.clear();
    for (const char* suffix : {"_1", "_2"}) {
        remove_file(path + suffix);
    }
    for (auto& title : session.titel) {
        title.setTitelText("");
    }
    session.titel[0].setTitelText("Titel");
    vektor_standard(session);
    session.obj = ObjectSelection();
}

void set_file(Session& session, std::string_view bytes) {
    reset_session(session, write_file("ve.dat", bytes));
}

bool runs(const std::function<void()>& step) {
    try {
        step();
        return true;
    } catch (const FatalError&) {
        return false;
    }
}

std::string tables_text(const Session& session) {
    std::string text;
    add_head(text, session);
    add_selection(text, session.obj);
    add_points(text, session.pu);
    add_lines(text, session.lin);
    for (std::int32_t i = 1; i <= session.nuoff.count(); ++i) {
        const NubezOffsetRow& row = session.nuoff[i];
        text += fmt::format("'{}' {} {}\n", row.nuoff_bez, row.nuoff_rechts, row.nuoff_hoch);
    }
    return text;
}

std::int32_t line_count(std::string_view bytes) {
    return static_cast<std::int32_t>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
}

std::string with_indented_lines(std::string_view bytes) {
    std::string text = " ";
    for (const char c : bytes) {
        text += c;
        if (c == '\n') {
            text += ' ';
        }
    }
    return text;
}

std::string lasting_lines(const std::string& path) {
    LineReader reader(path);
    std::string lasting;
    std::string_view line;
    while (reader.next(line)) {
        const Record record(line);
        if (record.has_keyword() && (record.is(keyword::netzteil) || !may_be_rewritten(record))) {
            lasting += line;
            lasting += '\n';
        }
    }
    return lasting;
}

}  // namespace veldra::fuzz
