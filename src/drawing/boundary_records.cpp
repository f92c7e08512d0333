#include "drawing/boundary_records.h"

#include <array>

#include "text/codepage.h"
#include "text/numbers.h"
#include "text/tokens.h"

namespace veldra {

namespace {

struct CodeName {
    std::string_view name;
    std::size_t level;
};

/// In the order of BoundaryCode.
constexpr std::array<CodeName, 8> code_names{{{"LND", 1},
                                              {"RBZ", 2},
                                              {"KRS", 3},
                                              {"KFS", 3},
                                              {"GEM", 4},
                                              {"SO1", 5},
                                              {"SO2", 6},
                                              {"SO3", 7}}};

constexpr int code_token = 5;

/// The next token as a number; 0 if it is missing or none.
double next_number(TokenCursor& cursor) {
    double value = 0;
    if (cursor.next_plain_decimal(value).empty()) {
        const Word word = cursor.next();
        value = word.found() ? zahl_wert(word.text) : 0;
    }
    return value;
}

}  // namespace

BoundaryCode boundary_code(std::string_view token) {
    constexpr std::size_t code_length = 3;
    if (token.size() == code_length) {
        const std::array<char, code_length> upper{upper_case(token[0]), upper_case(token[1]),
                                                  upper_case(token[2])};
        for (std::size_t i = 0; i < code_names.size(); ++i) {
            if (code_names[i].name == std::string_view(upper.data(), upper.size())) {
                return static_cast<BoundaryCode>(i);
            }
        }
    }
    return BoundaryCode::other;
}

std::size_t boundary_level(BoundaryCode code) {
    const auto index = static_cast<std::size_t>(code);
    return index < code_names.size() ? code_names[index].level : 0;
}

std::optional<BoundaryCode> boundary_end(std::int16_t obj_verw) {
    constexpr std::array<BoundaryCode, 6> ends{BoundaryCode::rbz, BoundaryCode::krs,
                                               BoundaryCode::gem, BoundaryCode::so1,
                                               BoundaryCode::so2, BoundaryCode::so3};
    if (obj_verw < 1 || obj_verw > static_cast<std::int16_t>(ends.size())) {
        return std::nullopt;
    }
    return ends[static_cast<std::size_t>(obj_verw) - 1];
}

BoundaryRecord read_boundary_record(std::string_view line) {
    BoundaryRecord record;
    const char first = line.empty() ? '\0' : line.front();
    switch (first) {
        case '@':
        case '#': {
            record.kind = BoundaryRecord::Kind::header;
            const Word word = suche_wort(line, code_token);
            record.code = word.found() ? boundary_code(word.text) : BoundaryCode::other;
            break;
        }
        case '0':
        case '1':
        case '2': {
            record.kind = first == '1' ? BoundaryRecord::Kind::next_vertex
                                       : BoundaryRecord::Kind::first_vertex;
            TokenCursor cursor(line);
            cursor.next();
            record.rechts = next_number(cursor);
            record.hoch = next_number(cursor);
            break;
        }
        default:
            break;
    }
    return record;
}

}  // namespace veldra
