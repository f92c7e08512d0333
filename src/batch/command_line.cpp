#include "batch/command_line.h"

#include <QGuiApplication>
#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>

#include "batch/command_input.h"
#include "batch/commands.h"
#include "batch/ground_commands.h"
#include "batch/output.h"
#include "batch/plot_command.h"
#include "batch/usage_messages.h"
#include "os/process.h"
#include "pdf/single_faces.h"
#include "text/fatal_error.h"

namespace veldra::batch {

namespace {

constexpr int smallest_picture = 16;
constexpr int largest_picture = 16384;
constexpr int most_copies = 100;
constexpr int most_jobs = 256;
constexpr std::int64_t most_sheets_allowed = 1'000'000'000'000;

/// The arguments of all commands; each command uses its own.
struct Arguments {
    FileOptions file;
    std::string old_file;  ///< of which the hand's work is taken over
    PictureOptions picture;
    TransformationOptions transformation;
    PlotArguments plot;
    std::string part;
    bool part_given = false;  ///< a part may have an empty name
    std::vector<std::string> parts;
    std::string output;
};

void speak_german(CLI::App& app) {
    app.option_defaults()->group("Optionen");
    app.set_help_flag("-h,--help", "diese Hilfe ausgeben und beenden")->group("Optionen");
    const auto formatter = app.get_formatter();
    for (const auto& [english, german] :
         std::map<std::string, std::string>{{"Usage", "Aufruf"},
                                            {"OPTIONS", "OPTIONEN"},
                                            {"Options", "Optionen"},
                                            {"Positionals", "Angaben"},
                                            {"SUBCOMMAND", "BEFEHL"},
                                            {"SUBCOMMANDS", "BEFEHLE"},
                                            {"Subcommands", "Befehle"},
                                            {"REQUIRED", "(nötig)"},
                                            {"TEXT", "TEXT"},
                                            {"INT", "ZAHL"}}) {
        formatter->label(english, german);
    }
}

CLI::App* add_plain_command(CLI::App& app, const std::string& name,
                            const std::string& description) {
    CLI::App* command = app.add_subcommand(name, description)->group("Befehle");
    speak_german(*command);
    return command;
}

/// A command on a graphic file.
CLI::App* add_command(CLI::App& app, const std::string& name, const std::string& description,
                      Arguments& arguments) {
    CLI::App* command = add_plain_command(app, name, description);
    command
        ->add_option("GRAPHIKDATEI", arguments.file.file,
                     "die Graphikdatei (ve*.dat), - für die Standardeingabe")
        ->required();
    return command;
}

void add_selection(CLI::App& command, Arguments& arguments) {
    command.add_option("--netzteil", arguments.part, "Name des Netzteils statt des ersten")
        ->option_text("NAME")
        ->each([&arguments](const std::string&) { arguments.part_given = true; });
    command
        .add_option("--obj", arguments.file.objects,
                    "Auswahl ändern, z. B. obj_puwe=3 (mehrfach möglich)")
        ->option_text("NAME=WERT")
        ->expected(1)
        ->take_all();
    command.add_option("--profil", arguments.file.profile, "Profildatei mit den Darstellungen")
        ->option_text("INI");
}

void add_picture(CLI::App& command, Arguments& arguments) {
    const CLI::Range size(smallest_picture, largest_picture);
    command.add_option("--breite", arguments.picture.width, "Breite des Bildes in Pixeln (1600)")
        ->option_text("PX")
        ->check(size);
    command.add_option("--hoehe", arguments.picture.height, "Höhe des Bildes in Pixeln (1000)")
        ->option_text("PX")
        ->check(size);
    command
        .add_option("--ausschnitt", arguments.picture.window,
                    "Ausschnitt in Metern statt des ganzen Netzteils")
        ->option_text("RW1,HW1,RW2,HW2");
}

void add_output(CLI::App& command, Arguments& arguments, const std::string& description) {
    command.add_option("-o", arguments.output, description)->option_text("DATEI")->required();
}

void add_plot_parts(CLI::App& command, PlotArguments& plot) {
    command
        .add_option("--netzteil", plot.parts,
                    "Name eines Netzteils statt des ersten (mehrfach möglich)")
        ->option_text("NAME")
        ->expected(1)
        ->take_all();
    command.add_flag("--alle", plot.all_parts, "alle Netzteile plotten");
    command
        .add_option("--obj", plot.objects, "Auswahl ändern, z. B. obj_puwe=3 (mehrfach möglich)")
        ->option_text("NAME=WERT")
        ->expected(1)
        ->take_all();
    command.add_option("--profil", plot.profile, "Profildatei mit den Darstellungen")
        ->option_text("INI");
}

void add_plot_settings(CLI::App& command, PlotArguments& plot) {
    const auto add = [&](const char* name, std::string& value, const char* description,
                         const char* text) {
        command.add_option(name, value, description)->option_text(text);
    };
    add("--massstab", plot.scale, "Maßstabszahl M von 1:M", "M");
    add("--ausrichtung", plot.orientation, "Lage der Blätter", "hoch|quer");
    add("--heftrand", plot.margin, "Heftrand der Blätter", "oben|links|kein");
    add("--legende", plot.legend,
        "Lage der Legende: 1 links oben, 2 links unten, 3 rechts oben, 4 rechts unten", "1..4");
    add("--blaetter", plot.sheets, "Zahl der Blätter nach rechts und nach oben", "RxH");
    add("--null", plot.zero, "Plotternullpunkt in Metern", "RW,HW");
    add("--papier", plot.paper,
        "A4, A3, A2, A1, A0 oder Breite x Höhe im Hochformat in Millimetern", "A4|...|A0|BxH");
    command.add_option("--exemplare", plot.copies, "Zahl der Exemplare (1)")
        ->option_text("N")
        ->check(CLI::Range(1, most_copies));
    command
        .add_option("--hoechstens", plot.most_sheets,
                    "eine Graphikdatei mit mehr Blättern nicht plotten (2000)")
        ->option_text("N")
        ->check(CLI::Range(std::int64_t{1}, most_sheets_allowed));
    command.add_flag("--ohne-leere", plot.without_empty,
                     "Blätter weglassen, auf denen nichts vom Netz zu sehen ist");
    command.add_flag("--grau", plot.grey, "wie auf einem Drucker ohne Farbe zeichnen");
}

void add_plot_results(CLI::App& command, PlotArguments& plot) {
    command.add_option("-o", plot.output, "PDF-Datei, bei mehreren Graphikdateien ein Ordner")
        ->option_text("AUSGABE");
    command.add_option("--drucker", plot.printer, "auf diesem Drucker statt in eine Datei")
        ->option_text("NAME");
    command.add_option("--jobs", plot.jobs, "so viele Graphikdateien gleichzeitig (1)")
        ->option_text("N")
        ->check(CLI::Range(1, most_jobs));
    command
        .add_option("--protokoll", plot.protocol,
                    "zählen, was aus den Sätzen wurde, und als JSON schreiben")
        ->option_text("DATEI");
}

/// A command line with what each of its commands does.
class CommandLine {
 public:
    CommandLine()
        : app_("VELDRA ohne Fenster: Graphikdateien von Netzausgleichungen", "veldra-cli") {
        speak_german(app_);
        app_.set_version_flag("--version", std::string("VELDRA ") + VELDRA_VERSION,
                              "die Version ausgeben und beenden")
            ->group("Optionen");
        app_.require_subcommand(1);
        add_tabellen();
        add_bild();
        add_operationen();
        add_normalform();
        add_uebernehmen();
        add_plot();
        add_bezirk();
        add_koordinaten();
        add_grenzen();
    }

    CLI::App& app() { return app_; }

    /// The command that was asked for; its result is the exit code.
    [[nodiscard]] const std::function<int()>& action() const {
        return std::find_if(actions_.begin(), actions_.end(),
                            [](const auto& entry) { return entry.first->parsed(); })
            ->second;
    }
    /// Whether that command works with the toolkit's fonts and printers.
    [[nodiscard]] bool needs_toolkit() const {
        return !plot_->parsed() || !arguments_.plot.printer.empty();
    }
    /// A message that names the inputs as they were typed.
    [[nodiscard]] std::string named(std::string message) const {
        for (const auto* input : {&file_, &profile_}) {
            message = *input ? (*input)->named(std::move(message)) : message;
        }
        return message;
    }

 private:
    /// The options of a command on one graphic file, which is made readable, as is its profile.
    FileOptions file_options() {
        FileOptions options = arguments_.file;
        if (arguments_.part_given) {
            options.part = arguments_.part;
        }
        refuse_standard_input_twice({options.file, options.profile});
        file_.emplace(options.file);
        if (file_->is_copy()) {
            options.copy = file_->path();
            options.name = file_->name();
        }
        if (!options.profile.empty()) {
            options.profile = profile_.emplace(options.profile).path();
        }
        return options;
    }

    void act_on(const CLI::App& command, std::function<void()> action) {
        actions_[&command] = [action = std::move(action)] {
            action();
            return done;
        };
    }

    void add_tabellen() {
        CLI::App* command =
            add_command(app_, "tabellen", "die gelesenen Tabellen als JSON ausgeben", arguments_);
        add_selection(*command, arguments_);
        act_on(*command, [this] { command_tabellen(file_options()); });
    }

    void add_bild() {
        CLI::App* command =
            add_command(app_, "bild", "das Bild als PNG oder SVG schreiben", arguments_);
        add_selection(*command, arguments_);
        add_picture(*command, arguments_);
        command->add_flag("--plotmodus", arguments_.picture.plotmodus,
                          "die Blätter des Plots zeigen");
        add_output(*command, arguments_, "Bilddatei (.png oder .svg)");
        act_on(*command,
               [this] { command_bild(file_options(), arguments_.picture, arguments_.output); });
    }

    void add_operationen() {
        CLI::App* command = add_command(
            app_, "operationen", "die Zeichenoperationen des Bildes als JSON ausgeben", arguments_);
        add_selection(*command, arguments_);
        add_picture(*command, arguments_);
        act_on(*command, [this] { command_operationen(file_options(), arguments_.picture); });
    }

    void add_normalform() {
        CLI::App* command = add_command(
            app_, "normalform", "die Datei so schreiben, wie Öffnen und Verlassen sie schreiben",
            arguments_);
        command
            ->add_option("--netzteil", arguments_.parts,
                         "Netzteil, das danach gezeigt wird (mehrfach möglich)")
            ->option_text("NAME")
            ->expected(1)
            ->take_all();
        command
            ->add_option("--profil", arguments_.file.profile, "Profildatei mit den Darstellungen")
            ->option_text("INI");
        add_output(*command, arguments_, "Datei, die geschrieben wird");
        act_on(*command,
               [this] { command_normalform(file_options(), arguments_.parts, arguments_.output); });
    }

    void add_uebernehmen() {
        CLI::App* command = add_plain_command(
            app_, "uebernehmen",
            "Beschriftungen, Auswahl, Titel und Ploteinstellungen in eine neue Datei übernehmen");
        command->add_option("ALT", arguments_.old_file, "die Graphikdatei mit den Einstellungen")
            ->required();
        command->add_option("NEU", arguments_.file.file, "die neu gerechnete Graphikdatei")
            ->required();
        add_output(*command, arguments_, "Datei, die geschrieben wird");
        act_on(*command, [this] {
            command_uebernehmen(arguments_.old_file, arguments_.file.file, arguments_.output);
        });
    }

    void add_plot() {
        CLI::App* command =
            add_plain_command(app_, "plot", "maßstäbliche Plots als PDF schreiben oder drucken");
        PlotArguments& plot = arguments_.plot;
        command
            ->add_option("GRAPHIKDATEI", plot.files,
                         "eine oder mehrere Graphikdateien (ve*.dat), - für die "
                         "Standardeingabe")
            ->required();
        add_plot_parts(*command, plot);
        add_plot_settings(*command, plot);
        add_plot_results(*command, plot);
        command->footer(
            "Ende-Code: 0 geplottet; 1 mindestens eine Datei oder ein Netzteil ließ sich nicht "
            "plotten; 2 falscher "
            "Aufruf; 3 geplottet, aber das Protokoll nennt abgewiesene Sätze.");
        plot_ = command;
        actions_[command] = [this] { return command_plot(arguments_.plot); };
    }

    void add_bezirk() {
        CLI::App* command = add_command(
            app_, "bezirk", "das Netz der Nummerierungsbezirke als JSON ausgeben", arguments_);
        add_selection(*command, arguments_);
        add_picture(*command, arguments_);
        act_on(*command, [this] { command_bezirk(file_options(), arguments_.picture); });
    }

    void add_koordinaten() {
        CLI::App* command = add_plain_command(
            app_, "koordinaten", "Zeilen \"rechts hoch\" der Standardeingabe transformieren");
        TransformationOptions& options = arguments_.transformation;
        command
            ->add_option("--von", options.from,
                         "System der Eingabe: Ellipsoid (1 Bessel, 2 Hayford, 3 WGS 72, 4 GRS 80, "
                         "5 Krassowsky), Abbildung (1 Gauß-Krüger, 2 UTM)")
            ->option_text("ELLI,ABBI")
            ->required();
        command->add_option("--nach", options.to, "System der Ausgabe")
            ->option_text("ELLI,ABBI")
            ->required();
        command->add_option("--meridian", options.meridian, "Streifen oder Zone der Ausgabe")
            ->option_text("N")
            ->required();
        command
            ->add_option("--datum", options.datum,
                         "Datumsübergang: fünf Zahlen in der Folge der Profildatei")
            ->option_text("\"N N N N N\"");
        act_on(*command, [this] { command_koordinaten(arguments_.transformation); });
    }

    void add_grenzen() {
        CLI::App* command = add_plain_command(
            app_, "grenzen", "eine Verwaltungsgrenzendatei ohne doppelte Strecken schreiben");
        command
            ->add_option("GRENZENDATEI", arguments_.file.file,
                         "die Verwaltungsgrenzendatei, - für die Standardeingabe")
            ->required();
        command->add_option("-o", arguments_.output, "Ausgabe (GRENZENDATEI mit \"_neu\")")
            ->option_text("DATEI");
        act_on(*command, [this] { command_grenzen(arguments_.file.file, arguments_.output); });
    }

    CLI::App app_;
    Arguments arguments_;
    std::optional<CommandInput> file_;
    std::optional<CommandInput> profile_;
    std::map<const CLI::App*, std::function<int()>> actions_;
    const CLI::App* plot_ = nullptr;
};

/// Remarks of the toolkit about its surroundings are no messages of this program.
void drop_toolkit_remarks(QtMsgType /*type*/, const QMessageLogContext& /*context*/,
                          const QString& /*message*/) {}

/// Runs the action; what it throws becomes a message and an exit code.
int guarded(const CommandLine& line, const std::function<int()>& action) {
    try {
        return action();
    } catch (const UsageError& error) {
        remark(error.what());
        return wrong_usage;
    } catch (const FatalError& error) {
        remark(line.named(error.what()));
    } catch (const std::bad_alloc&) {
        remark("der Speicher reicht nicht aus");
    } catch (const std::exception& error) {
        remark(line.named(error.what()));
    }
    return failed;
}

/// Help or version, which the parser has been asked for.
int answer(const CommandLine& line, const CLI::App& app, const CLI::Success& success) {
    std::ostringstream text;
    std::ostringstream no_messages;
    const int code = app.exit(success, text, no_messages);
    return guarded(line, [&] {
        write_to_standard_output(text.str());
        return code;
    });
}

}  // namespace

int run(int argc, char** argv) {
    const CleanTermination termination;
    CommandLine line;
    try {
        line.app().parse(argc, argv);
    } catch (const CLI::Success& success) {
        return answer(line, line.app(), success);
    } catch (const CLI::ParseError& error) {
        remark(usage_fault(line.app(), error));
        return wrong_usage;
    }
    // No display is needed: fonts and pictures come from the toolkit's offscreen platform.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(drop_toolkit_remarks);
    int no_arguments = 1;
    std::optional<QGuiApplication> application;
    if (line.needs_toolkit()) {
        keep_one_file_of_each_face();
        application.emplace(no_arguments, argv);
    }
    return guarded(line, line.action());
}

}  // namespace veldra::batch
