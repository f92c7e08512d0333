#include "batch/plot_command.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <set>
#include <thread>

#include <fmt/format.h>

#include "batch/command_input.h"
#include "batch/command_line.h"
#include "batch/output.h"
#include "batch/plot_file.h"
#include "batch/protocol_json.h"
#include "os/files.h"
#include "pdf/pdf_printer.h"
#include "plot/application_printer.h"
#include "text/fatal_error.h"
#include "windows/qt/qt_printers.h"
#include "windows/qt/qt_text_measurer.h"

namespace veldra::batch {

namespace {

/// The name of a file without folder and ending.
std::string stem_of(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const std::size_t dot = name.find_last_of('.');
    return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

std::string output_name(const std::string& file) {
    return (is_standard_input(file) ? "standardeingabe" : stem_of(file)) + ".pdf";
}

std::vector<std::string> output_paths(const PlotArguments& arguments) {
    if (!arguments.printer.empty()) {
        return std::vector<std::string>(arguments.files.size());
    }
    if (arguments.files.size() == 1 && !ordner_vorhanden(arguments.output)) {
        return {arguments.output};
    }
    std::vector<std::string> paths;
    std::set<std::string> taken;
    for (const std::string& file : arguments.files) {
        paths.push_back(arguments.output + "/" + output_name(file));
        if (!taken.insert(paths.back()).second) {
            throw UsageError(paths.back() + ": Ausgabe mehrerer Graphikdateien");
        }
    }
    return paths;
}

void check_arguments(const PlotArguments& arguments) {
    if (arguments.printer.empty() == arguments.output.empty()) {
        throw UsageError("nötig ist entweder -o oder --drucker; Hilfe mit --help");
    }
    if (arguments.all_parts && !arguments.parts.empty()) {
        throw UsageError("--alle und --netzteil schließen sich aus");
    }
    if (!arguments.printer.empty() && arguments.jobs > 1) {
        throw UsageError("--jobs und --drucker schließen sich aus");
    }
    std::vector<std::string> inputs = arguments.files;
    inputs.push_back(arguments.profile);
    refuse_standard_input_twice(inputs);
    ObjectSelection unused;
    for (const std::string& assignment : arguments.objects) {
        set_object(unused, assignment);
    }
}

void check_paths(const PlotArguments& arguments, const std::vector<std::string>& outputs) {
    for (const std::string& file : arguments.files) {
        for (const std::string& output : outputs) {
            refuse_input_as_output(file, output);
        }
        refuse_input_as_output(file, arguments.protocol);
    }
    const bool protocol_over_plot =
        !arguments.protocol.empty() &&
        std::any_of(outputs.begin(), outputs.end(), [&](const std::string& output) {
            return !output.empty() && (absolute_path(output) == absolute_path(arguments.protocol) ||
                                       same_file(output, arguments.protocol));
        });
    if (protocol_over_plot) {
        throw UsageError(arguments.protocol + ": Protokoll und Plot sind dieselbe Datei");
    }
}

/// Calls `work` and turns what it throws into the text of the result.
template <typename Work>
void guarded(FileResult& result, Work&& work) {
    try {
        work();
    } catch (const std::bad_alloc&) {
        result.failure = result.file + ": der Speicher reicht nicht aus";
    } catch (const std::exception& error) {
        result.failure = one_line(error.what());
        const auto names = [&result](const std::string& path) {
            return !path.empty() && result.failure.find(path) != std::string::npos;
        };
        if (!names(result.file) && !names(result.output)) {
            result.failure = result.file + ": " + result.failure;
        }
    }
}

/// Plots the file, or what it gives if it can be read only once.
PlottedFile plot_input(PlotTask task, Printer& printer) {
    const CommandInput input(task.file.file);
    if (input.is_copy()) {
        task.file.copy = input.path();
        task.file.name = input.name();
    }
    try {
        return plot_file(task, printer);
    } catch (const FatalError& error) {
        throw FatalError(input.named(error.what()));
    }
}

void plot_to_file(const PlotTask& task, FileResult& result) {
    guarded(result, [&] {
        PdfPrinter printer([&result] { return std::optional(result.output); });
        result.plotted = plot_input(task, printer);
    });
}

/// Plots the files, `jobs` at a time; each has session and printer of its own.
void plot_to_files(const std::vector<PlotTask>& tasks, int jobs, std::vector<FileResult>& results) {
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t i = next++; i < tasks.size(); i = next++) {
            plot_to_file(tasks[i], results[i]);
        }
    };
    std::vector<std::jthread> others;
    const std::size_t threads = std::min(static_cast<std::size_t>(jobs), tasks.size());
    while (others.size() + 1 < threads) {
        others.emplace_back(work);
    }
    work();
}

void plot_on_queue(const std::vector<PlotTask>& tasks, const std::string& name,
                   std::vector<FileResult>& results) {
    QtTextMeasurer measurer;
    QtPrinters printers(
        std::make_unique<PdfPrinter>([]() -> std::optional<std::string> { return std::nullopt; }),
        measurer);
    const std::int32_t index = find_printer(printers, name);
    if (index < 0 || !printers.is_queue(index)) {
        throw FatalError(name + ": Drucker ist nicht vorhanden");
    }
    printers.assign(index);
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        guarded(results[i], [&] { results[i].plotted = plot_input(tasks[i], printers); });
    }
}

PlotTask task_for(const PlotArguments& arguments, const PlotChoice& choice,
                  const std::string& profile, const std::string& file) {
    PlotTask task;
    task.file.file = file;
    task.file.objects = arguments.objects;
    task.file.profile = profile;
    task.parts = arguments.parts;
    task.all_parts = arguments.all_parts;
    task.choice = choice;
    task.copies = arguments.copies;
    task.grey = arguments.grey;
    task.without_empty = arguments.without_empty;
    task.with_protocol = !arguments.protocol.empty();
    task.most_sheets = arguments.most_sheets;
    return task;
}

bool refused_anything(const FileResult& result) {
    return std::any_of(
        result.plotted.parts.begin(), result.plotted.parts.end(),
        [](const PlottedPart& part) { return part.protocol && !part.protocol->refused.empty(); });
}

/// Tells of the parts that were left out of a document; true if there are any.
bool report_parts(const FileResult& result) {
    bool any = false;
    for (const PlottedPart& part : result.plotted.parts) {
        if (!part.failure.empty()) {
            remark(part.failure);
            any = true;
        }
    }
    return any;
}

int report_results(const std::vector<FileResult>& results) {
    int code = done;
    for (const FileResult& result : results) {
        if (!result.failure.empty()) {
            remark(result.failure);
            code = failed;
        } else if (report_parts(result)) {
            code = failed;
        } else if (code == done && refused_anything(result)) {
            code = records_refused;
        }
    }
    return code;
}

}  // namespace

int command_plot(const PlotArguments& arguments) {
    check_arguments(arguments);
    const PlotChoice choice = parse_plot_choice(arguments);
    const std::vector<std::string> outputs = output_paths(arguments);
    check_paths(arguments, outputs);
    for (const std::string& output : outputs) {
        tell_ownership_loss(output);
    }
    tell_ownership_loss(arguments.protocol);
    if (arguments.files.size() > 1 && !arguments.output.empty()) {
        create_folder(arguments.output);
    }
    std::optional<CommandInput> profile;
    if (!arguments.profile.empty()) {
        profile.emplace(arguments.profile);
    }
    std::vector<PlotTask> tasks;
    std::vector<FileResult> results;
    for (std::size_t i = 0; i < arguments.files.size(); ++i) {
        tasks.push_back(
            task_for(arguments, choice, profile ? profile->path() : "", arguments.files[i]));
        results.push_back({arguments.files[i], outputs[i], {}, {}});
    }
    if (arguments.printer.empty()) {
        plot_to_files(tasks, arguments.jobs, results);
    } else {
        plot_on_queue(tasks, arguments.printer, results);
    }
    const int code = report_results(results);
    if (!arguments.protocol.empty()) {
        ReplacedFile protocol(arguments.protocol);
        protocol.write(protocol_json(results));
        protocol.commit();
    }
    return code;
}

}  // namespace veldra::batch
