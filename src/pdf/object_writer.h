#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "os/files.h"
#include "os/spool_file.h"

namespace veldra {

/// Writes the objects of a document to its file, one after the other, with the table that finds
/// them. Objects up to `shared` may come in any order, all above only in that of their numbers:
/// where those are is kept in a file, however many there are. Failures throw FatalError.
class PdfObjectWriter {
 public:
    /// `shared`: the largest number of an object that comes in any order.
    PdfObjectWriter(ReplacedFile& file, int shared);

    /// Begins object `number`; what is written until end_object belongs to it.
    void begin_object(int number);
    void end_object();
    /// A whole stream object: the keys of its dictionary but its length, and its bytes.
    void stream_object(int number, std::string_view keys, std::string_view bytes);
    void write(std::string_view bytes);
    /// Table, trailer and end of the file. `keys` are those of the trailer but size and name.
    void finish(std::string_view keys);

 private:
    void append_places();
    [[nodiscard]] std::string name_of_content() const;

    ReplacedFile& file_;
    std::vector<std::uint64_t> shared_places_;  ///< by number; 0: there is no such object
    SpoolFile other_places_;
    std::string waiting_places_;
    int last_number_;
    std::uint64_t written_ = 0;
    // Two hashes of all bytes so far, which tell documents apart.
    std::uint64_t first_hash_ = 14695981039346656037ULL;
    std::uint64_t second_hash_ = 7809847782465536322ULL;
};

}  // namespace veldra
