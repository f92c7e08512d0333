#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "os/spool_file.h"
#include "plot/printer.h"

namespace veldra {

/// Width and height of a page, millimetres.
struct PdfPageSize {
    double width = 0;
    double height = 0;
};

/// A part of the spool file.
struct SpoolPiece {
    std::uint64_t place = 0;
    std::size_t size = 0;
};

/// A finished page: its paper, its title, and where its packed operators are.
struct PdfPageRecord {
    PdfPageSize size;
    SheetTitle title;
    std::vector<SpoolPiece> pieces;
};

/// The pages of a document in their order, kept in a file: a job of many sheets takes no more
/// memory than one of few. Failures throw FatalError.
class PdfPageList {
 public:
    void append(const PdfPageRecord& page);
    [[nodiscard]] std::size_t count() const { return count_; }

    /// Goes through the pages from the first on. The list outlives it and stays as it is meanwhile.
    class Walk {
     public:
        explicit Walk(const PdfPageList& list) : list_(list) {}
        /// Moves to the next page; false behind the last.
        bool next();
        [[nodiscard]] const PdfPageRecord& page() const { return page_; }

     private:
        const PdfPageList& list_;
        std::uint64_t place_ = 0;
        std::size_t passed_ = 0;
        PdfPageRecord page_;
    };

 private:
    SpoolFile spool_;
    std::size_t count_ = 0;
};

}  // namespace veldra
