#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>

namespace veldra::pdf_test {

struct CommandOutput {
    std::string text;  ///< both channels
    int status = -1;   ///< 0: success
};

/// Runs a reader of documents.
inline CommandOutput run(const std::string& command) {
    CommandOutput output;
    std::FILE* const pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error(command);
    }
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        output.text += static_cast<char>(c);
    }
    output.status = ::pclose(pipe);
    return output;
}

}  // namespace veldra::pdf_test
