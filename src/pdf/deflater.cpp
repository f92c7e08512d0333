#include "pdf/deflater.h"

#include <new>

#include <libdeflate.h>

namespace veldra {

namespace {
constexpr int fastest = 1;
}

Deflater::Deflater() : compressor_(libdeflate_alloc_compressor(fastest)) {
    if (compressor_ == nullptr) {
        throw std::bad_alloc();
    }
}

Deflater::~Deflater() {
    libdeflate_free_compressor(compressor_);
}

std::string_view Deflater::pack(std::string_view bytes) {
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor_, bytes.size());
    if (packed_.size() < bound) {
        packed_.resize(bound);
    }
    const std::size_t size = libdeflate_zlib_compress(compressor_, bytes.data(), bytes.size(),
                                                      packed_.data(), packed_.size());
    return {packed_.data(), size};
}

}  // namespace veldra
