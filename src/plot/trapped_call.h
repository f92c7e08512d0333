#pragma once

#include "plot/printer.h"

namespace veldra {

/// Runs a call on the printer; its failure is ignored.
template <typename Call>
void trapped(Call&& call) {
    try {
        call();
    } catch (const PrinterError&) {  // NOLINT(bugprone-empty-catch): a driver may refuse
    }
}

}  // namespace veldra
