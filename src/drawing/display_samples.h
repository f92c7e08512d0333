#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "model/label.h"
#include "model/session.h"
#include "model/target.h"
#include "model/text_measurer.h"

namespace veldra {

// The sample pictures of the display options. Each builds a small network of its own and hands it
// to the layers, with the settings of the session that is given, so that a sample looks as the
// picture or the sheet will. Coordinates of the target are twips from the lower left corner; paper
// is shown in its true size.

/// Size of a sample picture, twips.
struct SampleSize {
    double width = 0;
    double height = 0;
};

/// Whose sizes a sample shows.
enum class SampleMedium : std::uint8_t { screen, plot };

/// Where the labels of the point sample stand, and their fonts.
struct PointSample {
    std::array<double, 4> class_x{};  ///< of the four signatures
    double signatures_y = 0;
    Label pubez;  ///< placed by the layer at the signature of the chosen class
    FontSpec pubez_font;
    Label nubez;
    FontSpec nubez_font;
};

/// Signatures of the four point classes, the label of the chosen one (0 to 3) and a numbering
/// district label.
PointSample draw_point_sample(const Session& session, TextMeasurer& measurer, DrawingTarget& target,
                              const SampleSize& size, SampleMedium medium, std::size_t chosen);

/// Kinds of observations that have a frame of their own.
enum class ObservationSample : std::uint8_t { terrestrial, satellite, orientation };

/// An observation of a kind with its signature.
void draw_observation_sample(const Session& session, TextMeasurer& measurer, DrawingTarget& target,
                             const SampleSize& size, SampleMedium medium, ObservationSample kind);

/// The value of a slot (1 to 6) at a control point or a new point, at the slot's scale. `value` in
/// centimetres; 0 takes a value that fits the picture.
void draw_vector_sample(const Session& session, TextMeasurer& measurer, DrawingTarget& target,
                        const SampleSize& size, std::size_t slot, bool control_point, double value);

/// An observation whose test value falls into a class: `statistic` 1 EV, 2 NV, 3 EP and the class
/// from 1, whatever its limits; statistic 0 is a value that is not defined.
void draw_test_sample(const Session& session, TextMeasurer& measurer, DrawingTarget& target,
                      const SampleSize& size, std::int16_t statistic, std::size_t number);

/// A boundary of a level 1 to 7.
void draw_boundary_sample(const Session& session, TextMeasurer& measurer, DrawingTarget& target,
                          const SampleSize& size, std::size_t level);

}  // namespace veldra
