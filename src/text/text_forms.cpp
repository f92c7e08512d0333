#include "text/text_forms.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra {

namespace {

constexpr ScaleList massstab_liste{"5 000 000", "2 500 000", "2 000 000", "1 250 000", "1 000 000",
                                   "500 000",   "250 000",   "200 000",   "100 000",   "50 000",
                                   "25 000",    "20 000",    "10 000",    "5 000",     "2 500",
                                   "2 000",     "1 500",     "1 250",     "1 200",     "1 000",
                                   "750",       "500",       "250",       "200",       "100"};

constexpr std::string_view whole_number_mask = "#############0";

/// Whole numbers of up to this many digits are exact as 64-bit floats.
constexpr std::size_t exact_digits = 15;

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// The text is what the whole number mask makes of its own value.
bool is_whole_number(std::string_view text) {
    const std::string_view digits = text.substr(text.front() == '-' ? 1 : 0);
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), is_digit)) {
        return false;
    }
    if (digits.front() == '0') {
        return text == "0";
    }
    return digits.size() <= exact_digits ||
           trim(zahl_text(zahl_wert(text), whole_number_mask, "")) == text;
}

int small_number(std::string_view text) {
    return static_cast<int>(zahl_wert(text));
}

/// "3251001250" stands for 12.50; empty if the number has not that form.
std::string with_sub_number(std::string_view number) {
    const std::size_t length = number.size();
    if ((length != 9 && length != 10) || number[length - 6] != '0') {
        return {};
    }
    const int main_part = small_number(number.substr(length - 5, 3));
    const int sub_part = small_number(number.substr(length - 2, 2));
    if (main_part == 0) {
        return {};
    }
    const std::string text = std::to_string(main_part);
    return sub_part == 0 ? text : text + "." + std::to_string(sub_part);
}

}  // namespace

const ScaleList& ApplyScaleList() {
    return massstab_liste;
}

GroupedNumber GroupDigits(std::string_view text) {
    std::string compact(text);
    compact.erase(std::remove(compact.begin(), compact.end(), ' '), compact.end());
    GroupedNumber result;
    result.value = zahl_wert(compact);
    result.grouped = zahl_text(result.value, whole_number_mask, "");
    std::string& grouped = result.grouped;
    if (grouped.size() > 3) {
        grouped.insert(grouped.size() - 3, 1, ' ');
    }
    if (grouped.size() > 7) {
        grouped.insert(grouped.size() - 7, 1, ' ');
    }
    if (grouped.size() >= 12) {
        grouped.insert(grouped.size() - 11, 1, ' ');
    }
    return result;
}

std::string ShortPointNumber(std::string_view text) {
    if (trim(text).empty()) {
        return {};
    }
    if (!is_whole_number(text)) {
        return std::string(trim(text));
    }
    std::string short_form = with_sub_number(text);
    if (short_form.empty()) {
        const std::size_t kept = std::min<std::size_t>(text.size(), 5);
        short_form = std::to_string(small_number(text.substr(text.size() - kept)));
    }
    return short_form;
}

std::string taken_otherwise(std::string_view typed, std::string_view shown) {
    constexpr double close = 0.1;
    const double wanted = zahl_wert(typed);
    const bool is_number = std::any_of(typed.begin(), typed.end(), is_digit);
    const double off = std::fabs(zahl_wert(shown) - wanted);
    if (is_number && off <= close * std::fabs(wanted)) {
        return {};
    }
    return "Statt \"" + std::string(trim(typed)) + "\" gilt " + std::string(shown);
}

}  // namespace veldra
