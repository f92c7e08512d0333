#pragma once

#include <memory>
#include <string>
#include <string_view>

struct libdeflate_compressor;

namespace veldra {

/// Packs bytes for the deflate filter of documents, as fast as that goes.
class Deflater {
 public:
    Deflater();
    ~Deflater();
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    /// A whole zlib stream; valid until the next call.
    std::string_view pack(std::string_view bytes);

 private:
    libdeflate_compressor* compressor_;
    std::string packed_;
};

}  // namespace veldra
