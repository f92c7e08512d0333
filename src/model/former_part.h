#pragma once

#include <cstdint>

#include "model/session.h"

namespace veldra {

/// What the session holds of the current network part, kept while another part or another selection
/// is read. Unless that comes to its end (`replaced`), all of it comes back: a reading that fails
/// or is given up leaves the session as it was.
class FormerPart {
 public:
    enum class Points : std::uint8_t {
        moved,   ///< another part begins without any
        copied,  ///< the reading changes their values
        kept     ///< the reading leaves them alone
    };

    /// Takes the lines away, and the points as told. `obj` is the selection that comes back.
    FormerPart(Session& session, Points points, const ObjectSelection& obj);
    ~FormerPart();
    FormerPart(const FormerPart&) = delete;
    FormerPart& operator=(const FormerPart&) = delete;

    /// The new state stands; the former one goes.
    void replaced();

 private:
    void restore();

    Session& session_;
    Points points_;
    bool replaced_ = false;
    std::int16_t plotmodus_;
    Part part_;
};

}  // namespace veldra
