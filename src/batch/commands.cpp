#include "batch/commands.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "batch/batch_session.h"
#include "batch/json_output.h"
#include "drawing/pipeline.h"
#include "graphikdatei/writer.h"
#include "platform/os/files.h"
#include "platform/qt/picture_image.h"
#include "platform/qt/qt_text_measurer.h"
#include "shell/fatal_error.h"

namespace veldra::batch {

namespace {

void write_to_standard_output(const std::string& text) {
    errno = 0;
    const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (!whole || std::fflush(stdout) != 0) {
        throw FatalError(std::string("Standardausgabe: kann nicht geschrieben werden: ") +
                         std::strerror(errno));
    }
}

bool ends_with(const std::string& text, std::string_view ending) {
    return text.size() > ending.size() &&
           text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

void refuse_input_as_output(const std::string& input, const std::string& output) {
    if (same_file(input, output)) {
        throw UsageError(output + ": Ausgabe und Eingabe sind dieselbe Datei");
    }
}

}  // namespace

void command_tabellen(const FileOptions& options) {
    Session session;
    prepare_session(session, options);
    read_head(session, options);
    netzteil_daten_lesen(session, selection_change(options));
    write_to_standard_output(tables_json(session));
}

void command_bild(const FileOptions& options, const PictureOptions& picture,
                  const std::string& output) {
    const bool svg = ends_with(output, ".svg");
    if (!svg && !ends_with(output, ".png")) {
        throw UsageError(output + ": der Name der Ausgabe endet auf .png oder .svg");
    }
    refuse_input_as_output(options.file, output);
    Session session;
    QtTextMeasurer measurer;
    ConsoleInterface ui;
    open_view(session, options, picture, measurer, ui);
    const QSize size(picture.width, picture.height);
    write_picture_file(output, svg ? svg_bytes(session, measurer, ui, size)
                                   : png_bytes(render_picture(session, measurer, ui, size, 1.0)));
}

void command_operationen(const FileOptions& options, const PictureOptions& picture) {
    Session session;
    QtTextMeasurer measurer;
    ConsoleInterface ui;
    open_view(session, options, picture, measurer, ui);
    RecordingTarget target;
    DrawAll(session, target, measurer, ui);
    write_to_standard_output(operations_json(target.operations()));
}

void command_normalform(const FileOptions& options, const std::vector<std::string>& parts,
                        const std::string& output) {
    refuse_input_as_output(options.file, output);
    Session session;
    QtTextMeasurer measurer;
    ConsoleInterface ui;
    const TemporaryFolder folder;
    open_view(session, options, {}, measurer, ui);
    session.arbeitsdatei_basis = folder.path() + "/kopie";
    const Desk desk{measurer, ui, [] {}};
    for (const std::string& part : parts) {
        netzteil_anzeigen(session, part_number(session, part), desk);
    }
    arbeitskopie_schreiben(session);
    endfassung_schreiben(session, output);
}

}  // namespace veldra::batch
