#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "model/session.h"

namespace veldra::fuzz {

/// Ends the program, for the fuzzer to report, when something does not hold that always must.
void require(bool holds, const char* what);

/// Writes a file into the folder of this process, in the place that TMPDIR names, and gives its
/// path.
std::string write_file(const std::string& name, std::string_view bytes);
std::string file_bytes(const std::string& path);

/// A session as it is before the passes read a graphic file of these bytes.
void set_file(Session& session, std::string_view bytes);
/// A session on a graphic file that is there already, as after opening it anew.
void reset_session(Session& session, const std::string& path);

/// Runs a step of the program. False if it ended with the error that ends the program, which is a
/// proper answer to a bad file.
bool runs(const std::function<void()>& step);

/// All that the passes read, as one text to compare.
std::string tables_text(const Session& session);

/// Number of lines of a file; no table may have more rows.
std::int32_t line_count(std::string_view bytes);

/// The file with a blank before each line, which no record is read differently for.
std::string with_indented_lines(std::string_view bytes);

/// The lines that must outlast each rewriting, in their order: the parts, and all records with a
/// keyword that the program does not know.
std::string lasting_lines(const std::string& path);

}  // namespace veldra::fuzz
