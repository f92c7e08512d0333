#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/settings.h"
#include "text/fatal_error.h"

namespace veldra {

/// Text forms of the values of a profile. Each form turns a value into text and takes one from a
/// text that is not empty; `place` is named when a value does not fit its type.

/// A number by its mask. Comma and point are both read; what is no number is 0. Throws FatalError
/// ("Überlauf") for a value beyond the range of its type.
struct NumberForm {
    std::string_view mask;

    [[nodiscard]] std::string text(double value) const;
    [[nodiscard]] std::string text(float value) const;
    [[nodiscard]] std::string text(std::int32_t value) const;
    void take(std::string_view text, const ErrorPlace& place, double& value) const;
    void take(std::string_view text, const ErrorPlace& place, float& value) const;
    void take(std::string_view text, const ErrorPlace& place, std::int16_t& value) const;
    void take(std::string_view text, const ErrorPlace& place, std::int32_t& value) const;
};

/// "True" or "False". Read in any case, also in German, and as a number, where every number but 0
/// is true; any other text leaves the value as it is.
struct BooleanForm {
    [[nodiscard]] std::string text(std::int16_t value) const;
    void take(std::string_view text, const ErrorPlace& place, std::int16_t& value) const;
};

/// A text as it stands.
struct TextForm {
    [[nodiscard]] std::string text(const std::string& value) const { return value; }
    void take(std::string_view text, const ErrorPlace& place, std::string& value) const;
};

/// Five numbers in the order of DatumRow, cut like the tokens of a graphic file line; missing ones
/// are 0. A sixth token of 1 marks the older order, in which the second and the third number stand
/// the other way round and the fifth does not count.
struct DatumForm {
    [[nodiscard]] std::string text(const DatumRow& value) const;
    void take(std::string_view text, const ErrorPlace& place, DatumRow& value) const;
};

}  // namespace veldra
