#pragma once

#include "commands/lifecycle.h"
#include "model/session.h"

namespace veldra {

/// "Plotmodus ein": the picture shows the sheets of the plot. Nothing can be undone afterwards.
void plotmodus_ein(Session& session, const Desk& desk);
/// "Plotmodus aus": the picture is that of the screen again.
void plotmodus_aus(Session& session, const Desk& desk);

}  // namespace veldra
