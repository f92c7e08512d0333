#pragma once

#include <string>

#include "model/desk.h"
#include "model/session.h"

namespace veldra {

/// Plots the current part once into the PDF file `path`, which is replaced as a whole: with the
/// settings as they stand, on the paper of the application printer, or on A4 without one. See
/// plot_on_device for what stays as it was. Throws FatalError, naming the file and the reason; the
/// file that was there then stays.
void plot_als_pdf(Session& session, const std::string& path, const Desk& desk);

}  // namespace veldra
