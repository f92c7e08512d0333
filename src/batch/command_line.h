#pragma once

namespace veldra::batch {

/// Exit codes of the headless program.
enum ExitCode : int {
    done = 0,
    failed = 1,
    wrong_usage = 2,
    records_refused = 3  ///< plotted, but a protocol tells of records that could not be used
};

/// Runs veldra-cli: parses the arguments, executes the command, reports failures as one German
/// line on the standard error, and gives the exit code.
int run(int argc, char** argv);

}  // namespace veldra::batch
