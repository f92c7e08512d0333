#pragma once

#include <string>
#include <vector>

#include "design.h"
#include "graphic_writer.h"
#include "network.h"

namespace veldra::netzsim {

/// The points of a network part as the file shows them.
struct PartPoints {
    std::vector<Position> positions;  ///< drawn coordinates
    std::vector<Station> stations;
};

/// A decimal number as a German text has it, with a comma.
[[nodiscard]] std::string german(double value, int decimals);

/// "Redundanz 123, Standardabweichung der Gewichtseinheit 1,02".
[[nodiscard]] std::string quality_text(const NetworkResult& result);

/// Lower left corner for a plot: two centimetres of paper outside of the points, rounded down to
/// one centimetre of paper.
[[nodiscard]] Position paper_zero(const std::vector<Position>& positions, int denominator);

void write_stations(GraphicWriter& writer, const PartPoints& points);

/// All observations of a network in its order.
void write_observations(GraphicWriter& writer, const PartPoints& points, const Network& network,
                        const NetworkResult& result,
                        const std::vector<std::string>& target_names = {});

/// Ellipses and height errors of the new points, as far as the result has them.
void write_precision(GraphicWriter& writer, const PartPoints& points, const NetworkResult& result);

/// Residuals at the control points.
void write_control_residuals(GraphicWriter& writer, const PartPoints& points,
                             const NetworkResult& result);

/// Adjusted positions of a point cloud at one time.
struct Epoch {
    std::string name;
    std::vector<Position> positions;
};

/// Changes against the first epoch, one record for the second and one for each later epoch. The
/// running totals of the records are the changes rounded to 0.001 cm. Every fourth label has an
/// offset of its own.
void write_changes(GraphicWriter& writer, const PartPoints& points,
                   const std::vector<Epoch>& epochs);

}  // namespace veldra::netzsim
