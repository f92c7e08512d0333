#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/desk.h"
#include "model/session.h"
#include "plot/far_point.h"

namespace veldra {

/// A job of more sheets is announced before it starts.
inline constexpr std::int64_t announced_sheets = 200;

/// How many sheets a job will have.
class JobSize {
 public:
    /// Adds the sheets of the current part, once for each of `copies`. Its tables must have been
    /// read and its division been made. Throws FatalError when a count leaves 16 bits.
    void add_part(Session& session, const Desk& desk, int copies);

    [[nodiscard]] std::int64_t sheets() const { return sheets_; }
    /// Tells in UTF-8 what lies farthest out in the part with the most sheets; reads the file.
    [[nodiscard]] std::string farthest_out(const Session& session) const;

 private:
    std::int64_t sheets_ = 0;
    std::int64_t most_ = 0;
    std::optional<FarPoint> farthest_;
};

/// Asks whether a job of more than `announced_sheets` is really to start; the answer of the Return
/// key is No. True at once for a smaller one.
[[nodiscard]] bool confirm_job(const Session& session, UserInterface& ui, const JobSize& size);

}  // namespace veldra
