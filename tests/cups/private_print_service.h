#pragma once

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "temp_file.h"

namespace veldra::test {

/// A print service of its own in a folder of its own, with one queue "Plotter" that is the default
/// one: A4 and A3, margins of 12 points at the sides and 18 at top and bottom, colour, no sizes of
/// the user's. It keeps what it receives. Needs no rights.
class PrivatePrintService {
 public:
    PrivatePrintService() {
        write_files();
        start();
    }
    ~PrivatePrintService() { stop(); }
    PrivatePrintService(const PrivatePrintService&) = delete;
    PrivatePrintService& operator=(const PrivatePrintService&) = delete;

    /// "" if it runs, else why it does not.
    [[nodiscard]] const std::string& trouble() const { return trouble_; }
    [[nodiscard]] std::string socket() const { return folder_.path("socket"); }

    /// Document of a job, from 1; "" if the service has not received it.
    [[nodiscard]] std::string document(int job) const {
        return bytes_of("spool/d" + five_digits(job) + "-001");
    }
    /// Attributes of a job as the service keeps them; names and values stand in it as plain text.
    [[nodiscard]] std::string attributes(int job) const {
        return bytes_of("spool/c" + five_digits(job));
    }
    [[nodiscard]] int jobs_received() const {
        int count = 0;
        while (!document(count + 1).empty()) {
            ++count;
        }
        return count;
    }

    void start() {
        const char* program = "/usr/sbin/cupsd";
        if (::access(program, X_OK) != 0) {
            trouble_ = "there is no cupsd on this machine (package cups-daemon)";
            return;
        }
        const std::string configuration = folder_.path("root/cupsd.conf");
        const std::string files = folder_.path("cups-files.conf");
        const std::string output = folder_.path("output");
        child_ = ::fork();
        if (child_ == 0) {
            const int log = ::open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
            ::dup2(log, STDOUT_FILENO);
            ::dup2(log, STDERR_FILENO);
            ::execl(program, program, "-f", "-c", configuration.c_str(), "-s", files.c_str(),
                    static_cast<char*>(nullptr));
            ::_exit(127);
        }
        for (int tries = 0; tries < 100; ++tries) {
            if (std::filesystem::exists(socket())) {
                trouble_.clear();
                return;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        trouble_ = "cupsd does not start: " + bytes_of("output") + bytes_of("log/error");
    }

    void stop() {
        if (child_ > 0) {
            ::kill(child_, SIGTERM);
            int status = 0;
            ::waitpid(child_, &status, 0);
            child_ = 0;
            std::filesystem::remove(socket());
        }
    }

 private:
    static std::string five_digits(int number) {
        const std::string digits = std::to_string(number);
        return std::string(5 - digits.size(), '0') + digits;
    }

    [[nodiscard]] std::string bytes_of(const std::string& name) const {
        const std::string path = folder_.path(name);
        return std::filesystem::exists(path) ? testing_support::file_bytes(path) : "";
    }

    void write(const std::string& name, const std::string& text) { (void)folder_.file(name, text); }

    void write_files() {
        for (const char* name : {"root/ppd", "spool/tmp", "cache", "state", "log", "data/mime",
                                 "bin/backend", "bin/filter", "bin/daemon", "bin/notifier"}) {
            std::filesystem::create_directories(folder_.path(name));
        }
        std::string files;
        for (const auto& [key, name] : {std::pair{"ServerRoot", "root"},
                                        {"RequestRoot", "spool"},
                                        {"TempDir", "spool/tmp"},
                                        {"CacheDir", "cache"},
                                        {"StateDir", "state"},
                                        {"DataDir", "data"},
                                        {"ServerBin", "bin"},
                                        {"AccessLog", "log/access"},
                                        {"ErrorLog", "log/error"},
                                        {"PageLog", "log/page"},
                                        {"ServerKeychain", "keys"}}) {
            files += std::string(key) + " " + folder_.path(name) + "\n";
        }
        write("cups-files.conf", files + "FileDevice Yes\n");
        write("root/cupsd.conf", "LogLevel warn\nListen " + socket() +
                                     "\n"
                                     "Browsing Off\nWebInterface No\nDefaultAuthType None\n"
                                     "PreserveJobHistory Yes\nPreserveJobFiles Yes\n"
                                     "DirtyCleanInterval 0\n"
                                     "<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
                                     "<Policy default>\n<Limit All>\nOrder allow,deny\nAllow all\n"
                                     "</Limit>\n</Policy>\n");
        write("data/mime/mime.types", "application/pdf pdf string(0,%PDF)\n");
        write("data/mime/mime.convs", "# none\n");
        write("root/printers.conf",
              "<DefaultPrinter Plotter>\nInfo Test plotter\nDeviceURI file:///dev/null\n"
              "State Idle\nAccepting Yes\n</DefaultPrinter>\n");
        write("root/ppd/Plotter.ppd", driver());
    }

    static std::string driver() {
        std::string text =
            "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n"
            "*LanguageVersion: English\n*LanguageEncoding: ISOLatin1\n"
            "*PCFileName: \"PLOTTER.PPD\"\n*Manufacturer: \"Test\"\n*Product: \"(Plotter)\"\n"
            "*ModelName: \"Plotter\"\n*ShortNickName: \"Plotter\"\n*NickName: \"Plotter\"\n"
            "*PSVersion: \"(3010.000) 0\"\n*LanguageLevel: \"3\"\n*ColorDevice: True\n"
            "*DefaultColorSpace: RGB\n*cupsVersion: 2.4\n"
            "*cupsFilter2: \"application/pdf application/pdf 0 -\"\n";
        for (const std::string name : {"PageSize", "PageRegion"}) {
            text += "*OpenUI *" + name + ": PickOne\n*OrderDependency: 10 AnySetup *" + name +
                    "\n*Default" + name + ": A4\n*" + name + " A4: \"\"\n*" + name +
                    " A3: \"\"\n*CloseUI: *" + name + "\n";
        }
        return text +
               "*DefaultImageableArea: A4\n*ImageableArea A4: \"12 18 583 824\"\n"
               "*ImageableArea A3: \"12 18 830 1173\"\n*DefaultPaperDimension: A4\n"
               "*PaperDimension A4: \"595 842\"\n*PaperDimension A3: \"842 1191\"\n"
               "*OpenUI *ColorModel: PickOne\n*OrderDependency: 10 AnySetup *ColorModel\n"
               "*DefaultColorModel: RGB\n*ColorModel RGB: \"\"\n*ColorModel Gray: \"\"\n"
               "*CloseUI: *ColorModel\n";
    }

    testing_support::TempFolder folder_;
    pid_t child_ = 0;
    std::string trouble_ = "not started";
};

}  // namespace veldra::test
