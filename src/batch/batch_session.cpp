#include "batch/batch_session.h"

#include <algorithm>

#include <fmt/format.h>

#include "graphikdatei/header_pass.h"
#include "graphikdatei/maxima_pass.h"
#include "os/files.h"
#include "plot/printer_adapters.h"
#include "plot/sheet_outlines.h"
#include "settings/defaults.h"
#include "settings/profile.h"
#include "text/codepage.h"
#include "text/fatal_error.h"
#include "text/length_units.h"
#include "text/shown_text.h"
#include "view/viewport.h"
#include "windows/qt/picture_image.h"

namespace veldra::batch {

bool ConsoleInterface::message_box(MessageStyle /*style*/, const std::string& /*title*/,
                                   const std::string& text) {
    std::string line = text;
    std::replace(line.begin(), line.end(), '\n', ' ');
    tell_on_terminal(line);
    return true;
}

void prepare_session(Session& session, const FileOptions& options) {
    standard_alle(session);
    if (!options.profile.empty()) {
        // A profile that is named must be there; reading it would take a missing one as empty.
        const InputFile readable(options.profile);
        profil_lesen(session, options.profile);
    }
}

std::int32_t part_number(const Session& session, const std::string& name) {
    const std::string wanted = from_utf8(name);
    for (std::int32_t i = 1; i <= session.netz.count(); ++i) {
        if (session.netz[i].netz_name == wanted) {
            return i;
        }
    }
    throw FatalError(
        fmt::format("{}: Netzteil \"{}\" ist nicht vorhanden", session.graphikdatei, name));
}

namespace {

/// The session has the file's name and reads the copy, if there is one, as it reads a working copy.
void take_file(Session& session, const FileOptions& options) {
    if (options.copy.empty()) {
        datei_setzen(session, absolute_path(options.file));
        return;
    }
    datei_setzen(session, options.name);
    const std::size_t end = options.copy.rfind('/');
    session.arbeitsdatei_basis = options.copy.substr(0, end);
    session.arbeitsdatei_suffix = options.copy.substr(end);
}

}  // namespace

void read_head(Session& session, const FileOptions& options) {
    take_file(session, options);
    vektor_standard(session);
    kopf_lesen(session);
    maxima_lesen(session);
    if (options.part) {
        session.netz_aktuell = part_number(session, *options.part);
        load_plot_settings(session);
    }
}

SelectionChange selection_change(const FileOptions& options) {
    if (options.objects.empty()) {
        return {};
    }
    return [objects = options.objects](ObjectSelection& obj) {
        for (const std::string& assignment : objects) {
            set_object(obj, assignment);
        }
    };
}

namespace {

/// Plot mode, with a view of all sheets and of what lies beside them.
void show_sheets(Session& session, const Desk& desk) {
    constexpr std::int16_t with_margin = 1;
    session.plotmodus = 1;
    ComputeSheetDivision(session, desk);
    const TargetBox sheets = plot_ground(session);
    const Extents& extents = session.extents;
    FitView(session, std::min(sheets.xmin, extents.gesamt_rw_min),
            std::min(sheets.ymin, extents.gesamt_hw_min),
            std::max(sheets.xmax, extents.gesamt_rw_max),
            std::max(sheets.ymax, extents.gesamt_hw_max), with_margin);
}

}  // namespace

void open_view(Session& session, const FileOptions& options, const PictureOptions& picture,
               TextMeasurer& measurer, UserInterface& ui) {
    prepare_session(session, options);
    session.picture = {picture.width * twips_per_pixel, picture.height * twips_per_pixel};
    read_head(session, options);
    const Desk desk{measurer, ui, [] {}};
    netzteil_lesen(session, desk, selection_change(options));
    erstansicht(session, desk);
    if (picture.plotmodus) {
        show_sheets(session, desk);
    }
    if (!picture.window.empty()) {
        const auto window = parse_window(picture.window);
        FitView(session, window[0], window[1], window[2], window[3], 0);
    }
}

}  // namespace veldra::batch
