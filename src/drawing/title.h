#pragma once

#include <string>

#include "model/session.h"

namespace veldra {

/// Texts that BuildTitle makes. The first two name what is shown: observations and values, each
/// with its statistical test.
namespace title_code {
constexpr int objects = 0;
constexpr int objects_with_scales = 1;  ///< with the scales of the values
constexpr int legend_line_3 = 3;        ///< the network part, if there is one, and its objects
constexpr int legend_line_4 = 4;        ///< the scale of the plot
}  // namespace title_code

/// The text of a title code, Windows-1252.
[[nodiscard]] std::string BuildTitle(const Session& session, int code);

}  // namespace veldra
