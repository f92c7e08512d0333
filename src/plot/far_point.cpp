#include "plot/far_point.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include <fmt/format.h>

#include "graphikdatei/keywords.h"
#include "graphikdatei/line_reader.h"
#include "text/codepage.h"
#include "text/fatal_error.h"
#include "text/tokens.h"

namespace veldra {

namespace {

/// Calls `visit` for the coordinates of all points and of the ends of lines.
template <typename Visit>
void visit_places(const Session& session, Visit&& visit) {
    for (std::int32_t i = 1; i <= session.part.pu.count(); ++i) {
        visit(session.part.pu[i].pu_rechts, session.part.pu[i].pu_hoch);
    }
    for (std::int32_t i = 1; i <= session.part.lin.count(); ++i) {
        const LineCoordinates ends = session.part.lin[i].lin_schluessel.coordinates();
        visit(ends.x1, ends.y1);
        visit(ends.x2, ends.y2);
    }
}

double median(std::vector<double>& values) {
    const auto upper = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), upper, values.end());
    if (values.size() % 2 != 0) {
        return *upper;
    }
    return (*std::max_element(values.begin(), upper) + *upper) / 2;
}

/// No number stands for infinitely far.
double length(double across, double up) {
    const double length = std::hypot(across, up);
    return std::isnan(length) ? std::numeric_limits<double>::infinity() : length;
}

/// How far out a point lies: from the middle, and from the origin.
struct FarOut {
    double from_middle;
    double from_origin;
};

/// Two points alone have their middle between them, so the larger coordinates are the wild ones.
bool is_farther(const FarOut& a, const FarOut& b) {
    constexpr double rounding = 1 + 1e-9;
    if (a.from_middle > b.from_middle * rounding || b.from_middle > a.from_middle * rounding) {
        return a.from_middle > b.from_middle;
    }
    return a.from_origin > b.from_origin;
}

/// Lines hold their ends in centimetres.
bool is_near(double a, double b) {
    constexpr double a_centimetre = 0.0051;
    return std::abs(a - b) <= a_centimetre;
}

/// To the centimetre; one that is none of this earth by its size.
std::string coordinate(double value) {
    constexpr double longest = 1e12;
    return std::abs(value) < longest ? fmt::format("{:.2f}", value) : fmt::format("{:g}", value);
}

/// Whether the record has the point's coordinates in tokens n and n + 1.
bool is_at(Record& record, int n, const FarPoint& point) {
    return record.word(n + 1).found() && is_near(record.number(n), point.rechts) &&
           is_near(record.number(n + 1), point.hoch);
}

/// "Zeile 17 (PUNKTSIGNATUR)" of the first record at the point, "" if there is none.
std::string record_at(const Session& session, const FarPoint& point) {
    LineReader reader(working_path(session));
    bool inside = !point.in_netzteil;
    std::string_view line;
    while (reader.next(line)) {
        Record record(line);
        if (record.initial() == 'N' && record.is(keyword::netzteil)) {
            inside = point.in_netzteil && record.rest() == point.netzteil;
        } else if (inside && (is_at(record, 2, point) || is_at(record, 4, point))) {
            return fmt::format("Zeile {} ({})", reader.line_number(), to_utf8(record.keyword()));
        }
    }
    return {};
}

}  // namespace

std::optional<FarPoint> point_farthest_out(const Session& session) {
    std::vector<double> rechts;
    std::vector<double> hoch;
    visit_places(session, [&](double r, double h) {
        rechts.push_back(r);
        hoch.push_back(h);
    });
    if (rechts.empty()) {
        return std::nullopt;
    }
    const double middle_rechts = median(rechts);
    const double middle_hoch = median(hoch);
    FarPoint farthest;
    FarOut largest{-1, -1};
    visit_places(session, [&](double r, double h) {
        const FarOut far_out{length(r - middle_rechts, h - middle_hoch), length(r, h)};
        if (is_farther(far_out, largest)) {
            largest = far_out;
            farthest.rechts = r;
            farthest.hoch = h;
        }
    });
    farthest.in_netzteil =
        session.part.netz_aktuell > 0 && session.part.netz_aktuell <= session.netz.count();
    if (farthest.in_netzteil) {
        farthest.netzteil = session.netz[session.part.netz_aktuell].netz_name;
    }
    for (std::int32_t i = 1; i <= session.part.pu.count() && farthest.bez.empty(); ++i) {
        const PointRow& row = session.part.pu[i];
        if (is_near(row.pu_rechts, farthest.rechts) && is_near(row.pu_hoch, farthest.hoch)) {
            farthest.bez = trim(row.pu_bez);
        }
    }
    return farthest;
}

std::string describe(const Session& session, const FarPoint& point) {
    const std::string name =
        point.bez.empty() ? "ohne Bezeichnung" : '"' + to_utf8(point.bez) + '"';
    std::string text =
        fmt::format("Punkt {} ({}, {})", name, coordinate(point.rechts), coordinate(point.hoch));
    try {
        if (const std::string record = record_at(session, point); !record.empty()) {
            text += ", " + record;
        }
    } catch (const FatalError&) {  // NOLINT(bugprone-empty-catch): then without the record
    }
    if (point.in_netzteil) {
        text += ", Netzteil \"" + to_utf8(point.netzteil) + '"';
    }
    return text;
}

}  // namespace veldra
