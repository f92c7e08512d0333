#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "pdf/deflater.h"

namespace veldra {

/// Builds the operators of a page and hands them on in packed pieces, each a whole stream of its
/// own, so that no page has to be held in memory.
class ContentStream {
 public:
    using Sink = std::function<void(std::string_view packed)>;

    explicit ContentStream(Sink sink);

    /// A whole number and a blank.
    void whole(std::int64_t number);
    /// A number with up to three decimals and a blank; at most 1e9 in magnitude.
    void real(double number);
    /// An operator or any other text that needs no escaping.
    void text(std::string_view bytes);
    /// A string operand.
    void string(std::string_view bytes);
    /// Ends an operator; pieces are cut here.
    void end_line();
    /// Hands on what is left.
    void flush();

 private:
    char* room(std::size_t size);

    Sink sink_;
    Deflater deflater_;
    std::string buffer_;
    std::size_t used_ = 0;
};

}  // namespace veldra
