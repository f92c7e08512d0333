#pragma once

#include "model/paper_text.h"
#include "model/session.h"
#include "model/text_measurer.h"

namespace veldra {

/// Fills `session.extents` with the box around everything that the selection shows at the current
/// plot scale: signatures, vectors, ellipses and labels with their sizes on paper, at least 5 m
/// wide and high. The viewport stays. Linear in the rows of the tables.
void ComputeExtents(Session& session, PaperTextSize& paper_text);
/// The same with estimated text sizes, as long as there is no printer.
void ComputeExtents(Session& session, TextMeasurer& measurer);

/// Span of the bare coordinates of all points and line ends, metres: a lower bound of the spans of
/// the extents at any plot scale. Negative if there is nothing.
struct BareSpan {
    double rechts = 0;
    double hoch = 0;
};
[[nodiscard]] BareSpan bare_span(const Session& session);

}  // namespace veldra
