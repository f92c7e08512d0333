#include "batch/commands.h"

#include "batch/batch_session.h"
#include "batch/command_input.h"
#include "batch/ground_commands.h"
#include "batch/json_output.h"
#include "batch/output.h"
#include "drawing/pipeline.h"
#include "graphikdatei/hand_work_transfer.h"
#include "graphikdatei/writer.h"
#include "os/files.h"
#include "text/fatal_error.h"
#include "text/shown_text.h"
#include "windows/qt/picture_image.h"
#include "windows/qt/qt_text_measurer.h"

namespace veldra::batch {

namespace {

bool ends_with(const std::string& text, std::string_view ending) {
    return text.size() > ending.size() &&
           text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

}  // namespace

void command_tabellen(const FileOptions& options) {
    Session session;
    prepare_session(session, options);
    read_head(session, options);
    netzteil_daten_lesen(session, selection_change(options));
    write_to_standard_output(json_for_terminal(tables_json(session)));
}

void command_bild(const FileOptions& options, const PictureOptions& picture,
                  const std::string& output) {
    const bool svg = ends_with(output, ".svg");
    if (!svg && !ends_with(output, ".png")) {
        throw UsageError(output + ": der Name der Ausgabe endet auf .png oder .svg");
    }
    refuse_input_as_output(options.file, output);
    tell_ownership_loss(output);
    Session session;
    QtTextMeasurer measurer;
    ConsoleInterface ui;
    open_view(session, options, picture, measurer, ui);
    load_boundaries(session);
    const QSize size(picture.width, picture.height);
    write_picture_file(output, svg ? svg_bytes(session, measurer, ui, size)
                                   : png_bytes(render_picture(session, measurer, ui, size, 1.0)));
}

void command_operationen(const FileOptions& options, const PictureOptions& picture) {
    Session session;
    QtTextMeasurer measurer;
    ConsoleInterface ui;
    open_view(session, options, picture, measurer, ui);
    load_boundaries(session);
    RecordingTarget target;
    DrawAll(session, target, measurer, ui);
    write_to_standard_output(json_for_terminal(operations_json(target.operations())));
}

void command_normalform(const FileOptions& options, const std::vector<std::string>& parts,
                        const std::string& output) {
    refuse_input_as_output(options.file, output);
    tell_ownership_loss(output);
    Session session;
    QtTextMeasurer measurer;
    ConsoleInterface ui;
    const TemporaryFolder folder;
    open_view(session, options, {}, measurer, ui);
    session.graphikdatei = working_path(session);
    session.arbeitsdatei_basis = folder.path() + "/kopie";
    session.arbeitsdatei_suffix.clear();
    const Desk desk{measurer, ui, [] {}};
    for (const std::string& part : parts) {
        netzteil_anzeigen(session, part_number(session, part), desk);
    }
    arbeitskopie_schreiben(session);
    endfassung_schreiben(session, output);
}

void command_uebernehmen(const std::string& old, const std::string& file,
                         const std::string& output) {
    refuse_standard_input_twice({old, file});
    refuse_input_as_output(old, output);
    refuse_input_as_output(file, output);
    tell_ownership_loss(output);
    const CommandInput old_input(old);
    const CommandInput new_input(file);
    TransferReport report;
    try {
        HandWork hand_work = read_hand_work(old_input.path());
        forget_title_of_path(hand_work,
                             {old_input.name(), new_input.name(), absolute_path(output)});
        ReplacedFile out(output);
        report = transfer_hand_work(hand_work, new_input.path(), out);
        out.commit();
    } catch (const FatalError& error) {
        throw FatalError(new_input.named(old_input.named(error.what())));
    }
    write_to_standard_output(for_terminal(transfer_text(report, report.lost.size())));
}

}  // namespace veldra::batch
