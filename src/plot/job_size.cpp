#include "plot/job_size.h"

#include <fmt/format.h>

#include "plot/plot_frame.h"
#include "plot/printer_adapters.h"

namespace veldra {

void JobSize::add_part(Session& session, const Desk& desk, int copies) {
    ComputePaperArea(session, desk);
    count_plot_sheets(session);
    const std::int64_t of_part =
        std::int64_t{session.plot.plot_blatt_rechts} * session.plot.plot_blatt_hoch * copies;
    sheets_ += of_part;
    if (of_part > most_) {
        most_ = of_part;
        farthest_ = point_farthest_out(session);
    }
}

std::string JobSize::farthest_out(const Session& session) const {
    return farthest_ ? describe(session, *farthest_) : std::string();
}

bool confirm_job(const Session& session, UserInterface& ui, const JobSize& size) {
    if (size.sheets() <= announced_sheets) {
        return true;
    }
    return ui.message_box(
        MessageStyle::question_no_yes, "Plotten",
        fmt::format("Der Plot umfasst {} Blätter.\nAm weitesten außen liegt:\n{}\n\n"
                    "Soll wirklich geplottet werden?",
                    size.sheets(), size.farthest_out(session)));
}

}  // namespace veldra
