#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <sys/wait.h>

#include "temp_file.h"

namespace veldra::testing_support {

/// What a run of veldra-cli gave.
struct ProgramRun {
    int exit_code = -1;
    std::string out;
    std::string err;
};

/// Puts an argument into single quotes for the shell.
inline std::string shell_quoted(const std::string& argument) {
    std::string text = "'";
    for (const char c : argument) {
        text += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return text + "'";
}

/// Runs a script of the shell, in which $VELDRA_CLI is the program, in an environment without a
/// display. The exit code is that of its last command.
inline ProgramRun run_script(const TempFolder& folder, const std::string& script) {
    const std::string out = folder.path("stdout");
    const std::string err = folder.path("stderr");
    const std::string command =
        "env -u DISPLAY -u WAYLAND_DISPLAY VELDRA_CLI=" + shell_quoted(VELDRA_CLI) + " sh -c " +
        shell_quoted(script) + " >" + shell_quoted(out) + " 2>" + shell_quoted(err) + " </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, file_bytes(out), file_bytes(err)};
}

/// Runs the program with these arguments and the file (or folder) `input` as standard input, in an
/// environment without a display.
inline ProgramRun run_veldra_on(const TempFolder& folder, const std::vector<std::string>& arguments,
                                const std::string& input) {
    std::string command = "env -u DISPLAY -u WAYLAND_DISPLAY " + shell_quoted(VELDRA_CLI);
    for (const std::string& argument : arguments) {
        command += " " + shell_quoted(argument);
    }
    const std::string out = folder.path("stdout");
    const std::string err = folder.path("stderr");
    command += " <" + shell_quoted(input) + " >" + shell_quoted(out) + " 2>" + shell_quoted(err);
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, file_bytes(out), file_bytes(err)};
}

/// Runs the program with these arguments and this text as standard input.
inline ProgramRun run_veldra(const TempFolder& folder, const std::vector<std::string>& arguments,
                             const std::string& input = "") {
    return run_veldra_on(folder, arguments, folder.file("stdin", input));
}

}  // namespace veldra::testing_support
