#include "graphic_writer.h"

#include <stdexcept>

#include <fmt/format.h>

namespace veldra::netzsim {

namespace {

std::string coordinates(const Position& position) {
    return fixed(position.east, 13, 3) + fixed(position.north, 13, 3);
}

std::string test_values(const Reliability& values) {
    return fixed(values.ev, 7, 1) + fixed(values.nv, 7, 2) + fixed(values.ep, 7, 2);
}

std::string epoch(const EpochLabel& label) {
    std::string text = " \"" + label.text + "\"";
    if (label.east != 0.0) {
        text += fixed(label.east, 8, 1) + fixed(label.north, 8, 1);
    }
    return text;
}

/// EV and NV at a control point, nothing at any other.
std::string residual_test(bool control, const Reliability& values) {
    return control ? fixed(values.ev, 7, 1) + fixed(values.nv, 7, 2) : std::string();
}

}  // namespace

std::string encode(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto lead = static_cast<unsigned char>(text[i]);
        if (lead < 0x80) {
            bytes += text[i];
            continue;
        }
        // U+00A0 to U+00FF are the two-byte sequences C2 A0 to C3 BF and stand at their own number.
        const bool latin = (lead == 0xC2 || lead == 0xC3) && i + 1 < text.size();
        if (!latin) {
            throw std::invalid_argument("character outside of Latin-1");
        }
        ++i;
        const auto next = static_cast<unsigned char>(text[i]);
        bytes += static_cast<char>(((lead & 0x03U) << 6U) | (next & 0x3FU));
    }
    return bytes;
}

std::string fixed(double value, int width, int decimals) {
    std::string text = fmt::format("{:.{}f}", value, decimals);
    if (text.front() == '-' && text.find_first_of("123456789") == std::string::npos) {
        text.erase(0, 1);
    }
    return fmt::format("{:>{}}", text, width);
}

void GraphicWriter::record(std::string_view keyword, std::string_view rest) {
    bytes_ += encode(keyword) + " " + encode(rest) + "\r\n";
}

void GraphicWriter::vector_scales(const std::array<double, 6>& denominators) {
    std::string rest;
    for (const double denominator : denominators) {
        rest += fixed(denominator, 7, 1);
    }
    record("MAßSTABVEKTOREN", rest);
}

void GraphicWriter::paper(const Paper& paper) {
    std::string rest = fmt::format("{}{} {}", paper.denominator, coordinates(paper.zero),
                                   paper.orientation + 4 * paper.margin + 16 * paper.legend);
    if (paper.sheets_across > 0) {
        rest += fmt::format(" 1 {} {}", paper.sheets_across, paper.sheets_up);
    }
    record("MAßSTABGRUNDRISS", rest);
}

void GraphicWriter::selection(const Selection& s) {
    record("OBJEKTE",
           fmt::format("{} {} {} {} {} {} {} {} {} {} {} {} {} {} {}", s.labels, s.signatures,
                       s.point_values, s.test_residuals, s.districts, s.district_labels,
                       s.boundaries, s.observations, s.test_observations, s.test_value, s.reference,
                       s.ellipsoid, s.projection, s.meridian, s.epoch_labels));
}

void GraphicWriter::station(const Position& position, const Station& station) {
    std::string rest = fmt::format("{} {} {} {} \"{}\"", coordinates(position), station.kind_plane,
                                   station.kind_height, station.control ? 1 : 0, station.label);
    if (station.label_east != 0.0) {
        rest += fixed(station.label_east, 8, 1) + fixed(station.label_north, 8, 1);
    }
    record("PUNKTSIGNATUR", rest);
}

void GraphicWriter::district_label(std::string_view name, const Position& position) {
    record("NUMBEZOFFSET", std::string(name) + " " + coordinates(position));
}

void GraphicWriter::observation(std::string_view keyword, const Position& from, const Position& to,
                                const Reliability& values) {
    record(keyword, coordinates(from) + coordinates(to) + test_values(values));
}

void GraphicWriter::orientation(const Position& from, const Position& target,
                                std::string_view name) {
    record("ORIENTIERUNGSRICHTUNG",
           fmt::format("{}{} \"{}\"", coordinates(from), coordinates(target), name));
}

void GraphicWriter::gps_vector(const Position& from, const Position& to,
                               const std::array<Reliability, 3>& values) {
    record("GPS-RAUMVEKTOR", coordinates(from) + coordinates(to) + test_values(values[0]) +
                                 test_values(values[1]) + test_values(values[2]));
}

void GraphicWriter::plane_change(const Position& at, const Position& change, bool control,
                                 const EpochLabel& label) {
    record("LAGEÄNDERUNG", coordinates(at) + fixed(change.east, 9, 3) + fixed(change.north, 9, 3) +
                               (control ? " 1" : " 0") + epoch(label));
}

void GraphicWriter::height_change(const Position& at, double change, bool control,
                                  const EpochLabel& label) {
    record("HÖHENÄNDERUNG",
           coordinates(at) + fixed(change, 9, 3) + (control ? " 1" : " 0") + epoch(label));
}

void GraphicWriter::next_plane_epoch(const Position& change, const EpochLabel& label) {
    record("NÄCHSTEEPOCHE", fixed(change.east, 9, 3) + fixed(change.north, 9, 3) + epoch(label));
}

void GraphicWriter::next_height_epoch(double change, const EpochLabel& label) {
    record("NÄCHSTEEPOCHE", fixed(change, 9, 3) + epoch(label));
}

void GraphicWriter::plane_residual(const Position& at, const Position& v, bool control,
                                   const Reliability& east, const Reliability& north) {
    record("LAGERESTKLAFFUNGEN", coordinates(at) + fixed(v.east, 9, 3) + fixed(v.north, 9, 3) +
                                     (control ? " 1" : " 0") + residual_test(control, east) +
                                     residual_test(control, north));
}

void GraphicWriter::height_residual(const Position& at, double v, bool control,
                                    const Reliability& values) {
    record("HÖHENRESTKLAFFUNGEN", coordinates(at) + fixed(v, 9, 3) + (control ? " 1" : " 0") +
                                      residual_test(control, values));
}

void GraphicWriter::ellipse(const Position& at, const ErrorEllipse& ellipse) {
    record("LAGEFEHLERELLIPSE", coordinates(at) + fixed(ellipse.a, 9, 3) + fixed(ellipse.b, 9, 3) +
                                    fixed(ellipse.azimuth, 8, 2));
}

void GraphicWriter::height_error(const Position& at, double centimetres) {
    record("HÖHENFEHLER", coordinates(at) + fixed(centimetres, 9, 3));
}

}  // namespace veldra::netzsim
