#pragma once

#include "model/session.h"
#include "text/user_interface.h"

namespace veldra {

/// The hourglass stands on the picture as long as this lives.
class Hourglass {
 public:
    Hourglass(Session& session, UserInterface& ui) : session_(session), ui_(ui) { set(11); }
    ~Hourglass() { set(0); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

 private:
    void set(int pointer) {
        session_.window.mouse_pointer = pointer;
        ui_.set_mouse_pointer(pointer);
    }

    Session& session_;
    UserInterface& ui_;
};

}  // namespace veldra
