#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <thread>

#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

#include "child_process.h"
#include "program_run.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using nlohmann::json;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using testing_support::file_bytes;
using testing_support::ProgramRun;
using testing_support::shell_quoted;
using testing_support::TempFolder;

constexpr const char* two_parts =
    "VERFAHRENLEGENDE Übung\n"
    "NETZTEIL Süd\n"
    "OBJEKTE 1 1 0 0 0 0 0 1 0 1 0 1 1\n"
    "PUNKTSIGNATUR 1000 2000 0 0 1 \"A\"\n"
    "PUNKTSIGNATUR 1100 2000 0 0 0 \"B\"\n"
    "RICHTUNG 1000 2000 1100 2000 50 1 2\n"
    "NETZTEIL Leer\n";

class StandardStreams : public ::testing::Test {
 protected:
    std::string file(std::string_view utf8 = two_parts, const std::string& name = "ve.dat") {
        return folder.file(name, from_utf8(utf8));
    }
    ProgramRun run(const std::vector<std::string>& arguments) {
        return testing_support::run_veldra(folder, arguments);
    }
    ProgramRun script(const std::string& text) { return testing_support::run_script(folder, text); }
    std::string quoted(const std::string& name) { return shell_quoted(folder.path(name)); }
    std::vector<std::string> left_in(const std::string& path) {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    TempFolder folder;
};

TEST_F(StandardStreams, EveryCommandReadsAPipeLikeAFile) {
    const std::string path = file();
    const std::string cat = "cat " + shell_quoted(path) + " | \"$VELDRA_CLI\" ";
    ASSERT_EQ(run({"normalform", path, "-o", folder.path("n.dat")}).exit_code, 0);
    ASSERT_EQ(run({"bild", path, "-o", folder.path("b.svg")}).exit_code, 0);
    const std::string operations = run({"operationen", path}).out;
    const std::string districts = run({"bezirk", path}).out;
    for (const std::string input : {"-", "/dev/stdin"}) {
        const ProgramRun form = script(cat + "normalform " + input + " -o " + quoted("m.dat"));
        EXPECT_EQ(form.exit_code, 0) << form.err;
        EXPECT_EQ(file_bytes(folder.path("m.dat")), file_bytes(folder.path("n.dat")));
        EXPECT_EQ(script(cat + "bild " + input + " -o " + quoted("c.svg")).exit_code, 0);
        EXPECT_EQ(file_bytes(folder.path("c.svg")), file_bytes(folder.path("b.svg")));
        EXPECT_EQ(script(cat + "operationen " + input).out, operations);
        EXPECT_EQ(script(cat + "bezirk " + input).out, districts);
        const ProgramRun plot = script(cat + "plot " + input + " -o " + quoted("p.pdf"));
        EXPECT_EQ(plot.exit_code, 0) << plot.err;
        EXPECT_THAT(file_bytes(folder.path("p.pdf")), StartsWith("%PDF"));
        const json tables = json::parse(script(cat + "tabellen " + input).out);
        EXPECT_EQ(tables["pu_anzahl"], 2);
        EXPECT_EQ(tables["graphikdatei"], input == "-" ? "Standardeingabe" : input);
    }
}

TEST_F(StandardStreams, NamedPipeIsReadOnce) {
    const std::string path = file();
    ASSERT_EQ(::mkfifo(folder.path("rohr").c_str(), 0600), 0);
    const ProgramRun result = script(
        "cat " + shell_quoted(path) + " >" + quoted("rohr") + " & timeout 60 \"$VELDRA_CLI\" " +
        "normalform " + quoted("rohr") + " -o " + quoted("m.dat") + " --netzteil Leer");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    ASSERT_EQ(run({"normalform", path, "-o", folder.path("n.dat"), "--netzteil", "Leer"}).exit_code,
              0);
    EXPECT_EQ(file_bytes(folder.path("m.dat")), file_bytes(folder.path("n.dat")));
}

TEST_F(StandardStreams, BoundariesComeFromAPipe) {
    const std::string reduce = "printf '2 0 0\\n1 1 0\\n1 0 0\\n' | \"$VELDRA_CLI\" grenzen -";
    const ProgramRun result = script(reduce + " -o " + quoted("neu"));
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(file_bytes(folder.path("neu")), "2 0 0\r\n1 1 0\r\n");
    const ProgramRun nowhere = script("cd " + shell_quoted(folder.path()) + " && " + reduce);
    EXPECT_EQ(nowhere.exit_code, 2);
    EXPECT_THAT(nowhere.err, HasSubstr("-o"));
    EXPECT_FALSE(std::filesystem::exists(folder.path("-_neu")));
}

TEST_F(StandardStreams, ProfileComesFromAPipe) {
    const std::string path = shell_quoted(file());
    const std::string profile = "printf '[BEZPUN]\\r\\nnubcolor=255\\r\\n' | \"$VELDRA_CLI\" ";
    EXPECT_THAT(script(profile + "operationen " + path + " --profil -").out,
                HasSubstr("[\"ForeColor\",255]"));
    EXPECT_THAT(script(profile + "operationen " + path + " --profil /dev/stdin").out,
                HasSubstr("[\"ForeColor\",255]"));
    EXPECT_EQ(script(profile + "plot " + path + " " + shell_quoted(file(two_parts, "ve2.dat")) +
                     " --profil - -o " + quoted("plots"))
                  .exit_code,
              0);
}

TEST_F(StandardStreams, FailuresNameTheInputAsItWasGiven) {
    const std::string faulty = "printf '\\nPUNKTSIGNATUR 1 2 0 70000 1\\n' | \"$VELDRA_CLI\" ";
    for (const std::string command : {"tabellen -", "plot - -o p.pdf", "normalform - -o n.dat"}) {
        const ProgramRun result =
            script("cd " + shell_quoted(folder.path()) + " && " + faulty + command);
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_THAT(result.err,
                    AllOf(HasSubstr("Datei: Standardeingabe, Zeile: 2"), Not(HasSubstr("/proc"))));
    }
    const ProgramRun part =
        script("\"$VELDRA_CLI\" normalform - -o n.dat --netzteil West <" + shell_quoted(file()));
    EXPECT_THAT(part.err, HasSubstr("Standardeingabe: Netzteil \"West\" ist nicht vorhanden"));
    const ProgramRun unreadable =
        testing_support::run_veldra_on(folder, {"tabellen", "-"}, folder.path());
    EXPECT_EQ(unreadable.exit_code, 1);
    EXPECT_THAT(unreadable.err, HasSubstr("Standardeingabe: Datei kann nicht gelesen werden"));
}

TEST_F(StandardStreams, ClosedInputIsNoEmptyFile) {
    for (const std::string input : {"-", "/dev/stdin"}) {
        for (const std::string command : {"tabellen ", "normalform -o n.dat "}) {
            const ProgramRun result = script("cd " + shell_quoted(folder.path()) +
                                             " && \"$VELDRA_CLI\" " + command + input + " <&-");
            EXPECT_EQ(result.exit_code, 1) << command << input;
            EXPECT_THAT(result.out, IsEmpty());
            EXPECT_THAT(result.err,
                        HasSubstr(": Datei kann nicht gelesen werden: ist nicht geöffnet"));
        }
    }
    EXPECT_THAT(left_in(folder.path()), Not(::testing::Contains("n.dat")));
}

TEST_F(StandardStreams, StandardInputIsOneFile) {
    const std::string path = file();
    const std::string before = file_bytes(path);
    for (const std::string command :
         {"tabellen - --profil -", "plot - - -o p.pdf", "plot - --profil - -o p.pdf"}) {
        const ProgramRun result = script("cd " + shell_quoted(folder.path()) +
                                         " && \"$VELDRA_CLI\" " + command + " <ve.dat");
        EXPECT_EQ(result.exit_code, 2) << command;
        EXPECT_THAT(result.err, HasSubstr("nur einmal"));
    }
    for (const std::string command : {"normalform - -o ", "plot - -o ", "grenzen - -o "}) {
        const std::string quoted_path = shell_quoted(path);
        const ProgramRun result =
            script("\"$VELDRA_CLI\" " + command + quoted_path + " <" + quoted_path);
        EXPECT_EQ(result.exit_code, 2) << command;
        EXPECT_THAT(result.err, HasSubstr("dieselbe Datei"));
    }
    EXPECT_EQ(file_bytes(path), before);
}

TEST_F(StandardStreams, PlotsOfAFolderNameTheStandardInput) {
    const ProgramRun result =
        script("\"$VELDRA_CLI\" plot - " + shell_quoted(file(two_parts, "b.dat")) +
               " --jobs 2 -o " + quoted("plots") + " <" + shell_quoted(file()));
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_TRUE(std::filesystem::exists(folder.path("plots/standardeingabe.pdf")));
    EXPECT_TRUE(std::filesystem::exists(folder.path("plots/b.pdf")));
}

/// An empty part gives a remark.
TEST_F(StandardStreams, MessagesThatNobodyTakesDecideNothing) {
    const std::string plot =
        "\"$VELDRA_CLI\" plot " + shell_quoted(file()) + " --alle -o " + quoted("p.pdf");
    for (const std::string err : {"2>/dev/full", "2>&-"}) {
        EXPECT_EQ(script(plot + " " + err).exit_code, 0) << err;
        EXPECT_THAT(file_bytes(folder.path("p.pdf")), StartsWith("%PDF"));
        std::filesystem::remove(folder.path("p.pdf"));
        EXPECT_EQ(script("\"$VELDRA_CLI\" unsinn " + err).exit_code, 2) << err;
        EXPECT_EQ(script("\"$VELDRA_CLI\" tabellen fehlt.dat " + err).exit_code, 1) << err;
    }
}

/// The number of a closed stream must not become that of the file that is written.
TEST_F(StandardStreams, MessagesNeverGoIntoAFile) {
    const std::string path = shell_quoted(file());
    ASSERT_EQ(
        script("\"$VELDRA_CLI\" plot " + path + " --alle -o " + quoted("p.pdf") + " <&- >&- 2>&-")
            .exit_code,
        0);
    EXPECT_THAT(file_bytes(folder.path("p.pdf")), Not(HasSubstr("darzustellenden")));
    EXPECT_EQ(script("\"$VELDRA_CLI\" koordinaten --von 1,1 --nach 1,1 --meridian 2 <&-").exit_code,
              1);
}

/// Runs the program with one of its standard streams going into a pipe that nobody reads.
int run_without_reader(int stream, std::vector<std::string> arguments) {
    return testing_support::run_in_child([&] {
        int ends[2] = {-1, -1};
        const int null = ::open("/dev/null", O_WRONLY);
        if (::pipe(ends) != 0 || null < 0) {
            return 99;
        }
        ::close(ends[0]);
        ::dup2(null, STDOUT_FILENO);
        ::dup2(null, STDERR_FILENO);
        ::dup2(ends[1], stream);
        arguments.insert(arguments.begin(), VELDRA_CLI);
        std::vector<char*> words;
        for (std::string& argument : arguments) {
            words.push_back(argument.data());
        }
        words.push_back(nullptr);
        ::execv(VELDRA_CLI, words.data());
        return 98;
    });
}

TEST_F(StandardStreams, ReaderOfTheMessagesMayBeGone) {
    EXPECT_EQ(
        run_without_reader(STDERR_FILENO, {"plot", file(), "--alle", "-o", folder.path("p.pdf")}),
        0);
    EXPECT_THAT(file_bytes(folder.path("p.pdf")), StartsWith("%PDF"));
    EXPECT_EQ(run_without_reader(STDERR_FILENO, {"unsinn"}), 2);
}

TEST_F(StandardStreams, ResultsThatCannotBeWrittenAreAFailure) {
    const std::string path = file();
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"--help"},
                                               {"--version"},
                                               {"plot", "--help"},
                                               {"tabellen", path},
                                               {"operationen", path},
                                               {"bezirk", path}}) {
        std::string words;
        for (const std::string& argument : arguments) {
            words += " " + shell_quoted(argument);
        }
        for (const std::string out : {">/dev/full", ">&-"}) {
            const ProgramRun result = script("\"$VELDRA_CLI\"" + words + " " + out);
            EXPECT_EQ(result.exit_code, 1) << words << out;
            EXPECT_THAT(result.err,
                        StartsWith("veldra-cli: Standardausgabe: kann nicht geschrieben werden: "));
            EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
        }
        EXPECT_EQ(run_without_reader(STDOUT_FILENO, arguments), 1) << words;
    }
    EXPECT_THAT(script("\"$VELDRA_CLI\" --help >/dev/full").err,
                HasSubstr("auf dem Datenträger ist kein Speicherplatz mehr frei"));
}

/// A file that is read, copied and drawn for some while.
std::string long_network() {
    std::string text = "NETZTEIL A\r\n";
    for (int i = 0; i < 400000; ++i) {
        text += fmt::format("PUNKTSIGNATUR {} {} 0 0 1 \"{}\"\r\n", i % 977, i % 1009, i);
    }
    return text;
}

/// The program running with a folder for temporary files of its own.
class RunningProgram {
 public:
    RunningProgram(
        const std::string& temporary, std::vector<std::string> arguments,
        const std::function<void()>& prepare = [] {}) {
        child_ = ::fork();
        if (child_ != 0) {
            return;
        }
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            ::signal(signal, SIG_DFL);
        }
        prepare();
        ::setenv("TMPDIR", temporary.c_str(), 1);
        const int null = ::open("/dev/null", O_WRONLY);
        ::dup2(null, STDERR_FILENO);
        arguments.insert(arguments.begin(), VELDRA_CLI);
        std::vector<char*> words;
        for (std::string& argument : arguments) {
            words.push_back(argument.data());
        }
        words.push_back(nullptr);
        ::execv(VELDRA_CLI, words.data());
        ::_exit(98);
    }
    ~RunningProgram() {
        if (child_ > 0) {
            ::kill(child_, SIGKILL);
            ::waitpid(child_, nullptr, 0);
        }
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    void send(int signal) const { ::kill(child_, signal); }
    /// Its state at the end, as the system gives it.
    int wait() {
        int status = 0;
        ::waitpid(child_, &status, 0);
        child_ = -1;
        return status;
    }

 private:
    pid_t child_ = -1;
};

class EndedPrograms : public StandardStreams {
 protected:
    EndedPrograms()
        : temporary_(folder.path("tmp")), path_(folder.file("lang.dat", long_network())) {
        std::filesystem::create_directory(temporary_);
    }
    /// What of the program stands among the temporary files. The toolkit has a lasting folder of
    /// the user's there.
    [[nodiscard]] std::vector<std::string> temporaries() {
        std::vector<std::string> names = left_in(temporary_);
        std::erase_if(names, [](const std::string& name) { return !name.starts_with("veldra"); });
        return names;
    }
    /// Waits until the program has made its folder.
    [[nodiscard]] bool folder_appears() {
        for (int i = 0; i < 20000; ++i) {
            if (!temporaries().empty()) {
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return false;
    }
    std::vector<std::string> normal_form() {
        return {"normalform", path_, "-o", folder.path("n.dat")};
    }

    std::string temporary_;
    std::string path_;
};

TEST_F(EndedPrograms, SignalsLeaveNoTemporaryFolder) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        RunningProgram program(temporary_, normal_form());
        ASSERT_TRUE(folder_appears());
        program.send(signal);
        const int status = program.wait();
        ASSERT_TRUE(WIFSIGNALED(status)) << status;
        EXPECT_EQ(WTERMSIG(status), signal);
        EXPECT_THAT(temporaries(), IsEmpty());
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path("n.dat")));
}

TEST_F(EndedPrograms, SignalsLeaveNoHalfDocument) {
    const std::string target = folder.path("ziel");
    std::filesystem::create_directory(target);
    RunningProgram program(temporary_, {"plot", path_, "-o", target + "/p.pdf"});
    // Seen once is enough: who lists a folder while a name changes in it may find neither name.
    bool begun = false;
    for (int i = 0; i < 20000 && !begun; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        begun = !left_in(target).empty();
    }
    ASSERT_TRUE(begun);
    program.send(SIGTERM);
    const int status = program.wait();
    ASSERT_TRUE(WIFSIGNALED(status)) << status;
    EXPECT_THAT(left_in(target), IsEmpty());
}

TEST_F(EndedPrograms, SignalThatIsToBeIgnoredIsIgnored) {
    RunningProgram program(temporary_, normal_form(), [] { ::signal(SIGHUP, SIG_IGN); });
    ASSERT_TRUE(folder_appears());
    program.send(SIGHUP);
    const int status = program.wait();
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_THAT(temporaries(), IsEmpty());
}

TEST_F(EndedPrograms, FilesThatGrowTooLargeAreAFailureAndNoMore) {
    const ProgramRun result =
        script("export TMPDIR=" + shell_quoted(temporary_) + "; ulimit -f 2000; \"$VELDRA_CLI\" " +
               "normalform " + shell_quoted(path_) + " -o " + quoted("n.dat"));
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("die Datei würde zu groß"));
    EXPECT_THAT(temporaries(), IsEmpty());
    EXPECT_THAT(left_in(folder.path()), Not(::testing::Contains(StartsWith("n.dat"))));
}

}  // namespace
}  // namespace veldra
