#pragma once

#include <string>
#include <string_view>

#include "network.h"

namespace veldra::netzsim {

/// A text in UTF-8 as Windows-1252, for characters up to U+00FF. Throws std::invalid_argument for
/// any other. Kept apart from the program's own conversion: the samples are made without the code
/// that they test.
[[nodiscard]] std::string encode(std::string_view text);

/// A number with fixed decimals, padded with blanks to a width, without a minus sign before zero.
[[nodiscard]] std::string fixed(double value, int width, int decimals);

/// What of a network part is shown, in the order and with the codes of the record OBJEKTE.
struct Selection {
    int labels = 1;
    int signatures = 1;
    int point_values = 0;
    int test_residuals = 0;
    int districts = 1;
    int district_labels = 1;
    int boundaries = 3;
    int observations = 1;
    int test_observations = 0;
    int test_value = 1;
    int reference = 1;
    int ellipsoid = 1;
    int projection = 1;
    int meridian = -99;
    int epoch_labels = 0;
};

/// Paper of a network part; the codes of the record MAßSTABGRUNDRISS.
struct Paper {
    int denominator = 1000;
    Position zero;
    int orientation = 1;  ///< 1 Hochformat, 2 Querformat
    int margin = 2;       ///< 1 oben, 2 links, 3 kein Heftrand
    int legend = 4;
    int sheets_across = 0;  ///< 0: automatic division
    int sheets_up = 0;
};

/// A point as it is named and classified.
struct Station {
    std::string label;  ///< UTF-8
    int kind_plane = 1;
    int kind_height = 1;
    bool control = false;
    double label_east = 0.0;  ///< percent of the font height; 0: standard place, no offsets
    double label_north = 0.0;
};

/// Label of a value record: epoch text and its offset, which is left out when `east` is 0.
struct EpochLabel {
    std::string text;
    double east = 0.0;
    double north = 0.0;
};

/// Builds a graphic file record by record: Windows-1252, lines ending in CR LF. Texts are UTF-8.
class GraphicWriter {
 public:
    /// A keyword and the rest of the line as it stands.
    void record(std::string_view keyword, std::string_view rest);
    void vector_scales(const std::array<double, 6>& denominators);
    void paper(const Paper& paper);
    void selection(const Selection& selection);
    void station(const Position& position, const Station& station);
    void district_label(std::string_view name, const Position& position);

    void observation(std::string_view keyword, const Position& from, const Position& to,
                     const Reliability& values);
    void orientation(const Position& from, const Position& target, std::string_view name);
    void gps_vector(const Position& from, const Position& to,
                    const std::array<Reliability, 3>& values);

    /// Values in centimetres.
    void plane_change(const Position& at, const Position& change, bool control,
                      const EpochLabel& label);
    void height_change(const Position& at, double change, bool control, const EpochLabel& label);
    void next_plane_epoch(const Position& change, const EpochLabel& label);
    void next_height_epoch(double change, const EpochLabel& label);
    void plane_residual(const Position& at, const Position& v, bool control,
                        const Reliability& east, const Reliability& north);
    void height_residual(const Position& at, double v, bool control, const Reliability& values);
    void ellipse(const Position& at, const ErrorEllipse& ellipse);
    void height_error(const Position& at, double centimetres);

    [[nodiscard]] const std::string& bytes() const { return bytes_; }

 private:
    std::string bytes_;
};

}  // namespace veldra::netzsim
