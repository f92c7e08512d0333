#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/session.h"
#include "model/text_measurer.h"

namespace veldra {

class Printer;

// What the dialog of the display options does with the session, without its controls. The dialog
// edits the live values; the twins of settings_twins.h hold the state to return to.

/// The tabs of the dialog, in order.
enum class DisplayTab : std::uint8_t {
    points_screen,
    points_plot,
    observations_screen,
    observations_plot,
    vectors_position,
    vectors_height,
    tests,
    boundaries
};
constexpr std::size_t display_tab_count = 8;

/// Title and text of a message box for a refused value, UTF-8.
struct DisplayMessage {
    std::string title;
    std::string text;

    bool operator==(const DisplayMessage&) const = default;
};

/// Brings the twins of the vectors into line with the live values, since a graphic file sets the
/// scales without them, and gives the plot scale to return to.
[[nodiscard]] double display_begin(Session& session);
/// The defaults of a tab's group. The twins stay.
void display_standard(Session& session, DisplayTab tab);
/// Keeps what is set: saves all groups in their twins and the scale in `plot_merk`, and computes
/// the extents anew if a file is open, with the text sizes of the printer; it may be null. False,
/// and nothing is kept, if the part would fall on more sheets than can be counted: it could not be
/// read any more.
[[nodiscard]] bool display_accept(Session& session, TextMeasurer& measurer, Printer* printer);
/// Returns to the twins and to the plot scale of `display_begin`.
void display_reject(Session& session, double plot_massstab);

// --- Numbers in boxes ---

/// A number as the boxes show it: the required digits of `mask`, further decimals as far as the
/// value has them and the mask allows, and no point at the end.
[[nodiscard]] std::string number_text(double value, std::string_view mask);
/// A typed number as a 32-bit float; one beyond its range takes the largest of its sign.
[[nodiscard]] float float_value(std::string_view text);

// --- Scales ---

/// A typed scale denominator or factor.
struct ScaleEntry {
    bool valid = false;
    std::string text;  ///< in its normal form
    double value = 0;
};

/// The ground scale: valid if above 0, also in its normal form, which has groups of three digits.
[[nodiscard]] ScaleEntry ground_scale_entry(std::string_view text);
/// A vector scale, one decimal at most: valid if above 0 with that decimal. It may be typed in
/// groups too.
[[nodiscard]] ScaleEntry vector_scale_entry(std::string_view text);
/// The multiplier of line widths: valid from 1 up to what the widest pen of the picker can take
/// without passing 16 bits.
[[nodiscard]] ScaleEntry width_factor_entry(std::string_view text);

/// Texts of the combo boxes for a value; "" for a ground scale that is not set.
[[nodiscard]] std::string ground_scale_text(double plot_massstab);
[[nodiscard]] std::string vector_scale_text(double vektor_massstab);

/// The scales that a vector combo box offers.
[[nodiscard]] const std::vector<std::string>& offered_vector_scales();

/// Sets both scales of a vector slot (1 to 6) to 1/`denominator`.
void set_vector_scale(Session& session, std::size_t slot, double denominator);

/// What a wrong entry is answered with, on leaving its box and on OK.
enum class ScaleBox : std::uint8_t { ground, vector, width_factor };
[[nodiscard]] DisplayMessage scale_message(ScaleBox box);
[[nodiscard]] DisplayMessage scale_message_on_ok(ScaleBox box);

// --- Test classes ---

/// The limits of the test tab, in the order of its boxes.
enum class TestLimit : std::uint8_t { grenzwert, ev, nv1, nv2, nv3, ep1, ep2 };
constexpr std::size_t test_limit_count = 7;

[[nodiscard]] double& test_limit(Settings& settings, TestLimit limit);
[[nodiscard]] double test_limit(const Settings& settings, TestLimit limit);
struct LimitBounds {
    double lower = 0;
    double upper = 0;
};
/// A limit cannot fall below the one before it.
[[nodiscard]] LimitBounds test_limit_bounds(const Settings& settings, TestLimit limit);

/// A typed limit after its check.
struct LimitEntry {
    std::string typed;  ///< the typed number in its normal form
    double value = 0;   ///< within the bounds
    std::string text;   ///< the value in its normal form
    /// Set if the typed number lies outside the bounds.
    std::optional<DisplayMessage> message;
};
[[nodiscard]] LimitEntry check_limit(std::string_view text, const LimitBounds& bounds);

/// The classes of the test tab in their order: 0 undefined values, 1 and 2 EV, 3 to 6 NV, 7 to 9
/// EP.
constexpr std::size_t test_class_count = 10;
/// Statistic 1 EV, 2 NV, 3 EP of a class; 0 for undefined values. Number of the class within it.
struct TestClass {
    std::int16_t statistic = 0;
    std::size_t number = 0;
};
[[nodiscard]] TestClass test_class(std::size_t index);

/// Where a width and a colour are kept; several places if one control stands for all of them.
struct PenPlaces {
    std::vector<std::int16_t*> widths;
    std::vector<std::int32_t*> colours;

    [[nodiscard]] std::int16_t width() const { return *widths.front(); }
    [[nodiscard]] std::int32_t colour() const { return *colours.front(); }
    void set_width(std::int16_t width) const;
    void set_colour(std::int32_t colour) const;
};

[[nodiscard]] PenPlaces test_pen_places(Settings& settings, std::size_t index);
/// The limit that stands in a box beside the class: its own, or, of the last class, none.
[[nodiscard]] std::optional<TestLimit> test_class_limit(std::size_t index);
/// "EV > ": how values of the class relate to its limit.
[[nodiscard]] std::string_view test_class_relation(std::size_t index);
/// "EV > 10.0": what falls into the class, with the limits in force.
[[nodiscard]] std::string test_class_text(const Settings& settings, std::size_t index);
/// "für EV > 10.0".
[[nodiscard]] std::string test_class_caption(const Settings& settings, std::size_t index);
/// Caption of the line width picker for the class.
[[nodiscard]] std::string test_width_caption(std::size_t index);

// --- Vectors ---

/// The vectors of a tab in their order: AP and NP of the first two kinds, and the third kind, which
/// has one pen for both.
constexpr std::size_t vector_item_count = 5;
struct VectorItem {
    std::size_t slot = 0;  ///< 1 to 6
    bool control_points = false;
    bool new_points = false;
};
/// `first_slot` 1 for positions, 4 for heights.
[[nodiscard]] VectorItem vector_item(std::size_t first_slot, std::size_t index);
[[nodiscard]] PenPlaces vector_pen_places(Settings& settings, const VectorItem& item);
/// "für Lageänderungen Anschlusspunkte".
[[nodiscard]] std::string vector_caption(const VectorItem& item);
/// The largest value of a slot's control points or new points, as its box shows it: "max. AP: 12.3"
/// in centimetres. Vectors of width 0 say that they are not shown.
[[nodiscard]] std::string vector_maximum_text(const Session& session, std::size_t slot,
                                              bool control_points);
/// The value of the item's points that is the largest whatever its sign, centimetres.
[[nodiscard]] double vector_maximum(const Session& session, const VectorItem& item);

// --- Points ---

/// Name of a point class 0 to 3: "TP", "AP(1)", "AP(2)", "sonst.".
[[nodiscard]] std::string_view point_class_name(std::size_t klasse);
/// "Radius Punktsignatur TP:".
[[nodiscard]] std::string point_radius_label(std::size_t klasse);

}  // namespace veldra
