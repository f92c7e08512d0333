#pragma once

#include <cstdint>
#include <string>

#include "model/session.h"
#include "view/viewport.h"

namespace veldra {

/// What a right click on a label tells in `lbl_punubinf`, in a font of fixed width.

/// Anchor of the label of point row `i` on the ground: the tip of a position change, the top of a
/// height change, else the point.
[[nodiscard]] WorldPoint label_anchor(const Session& session, std::int32_t i);

/// What is known of point row `i`: UTF-8, lines end with CR LF.
[[nodiscard]] std::string point_info(const Session& session, std::int32_t i);

/// Left upper corner of the info label of point row `i`, whose size is in metres of ground. It
/// stands at the anchor; at the right edge of the view it flips to the left, at the bottom upward.
[[nodiscard]] PicturePoint place_point_info(const Session& session, std::int32_t i, float width,
                                            float height);

/// The numbers of the four districts around the node of the label `lbl_nubez(i)`; "" for a label
/// that is no node's.
[[nodiscard]] std::string district_info(const Session& session, std::int32_t i);

/// Left upper corner of the info label that is centred on the node of `lbl_nubez(i)`.
[[nodiscard]] PicturePoint place_district_info(const Session& session, std::int32_t i, float width,
                                               float height);

/// The label stands at a node of the district grid. Those that a preview places on the edges of
/// the sheets do not.
[[nodiscard]] bool is_node_label(const Session& session, std::int32_t i);

}  // namespace veldra
