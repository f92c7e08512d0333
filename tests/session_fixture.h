#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "graphikdatei/header_pass.h"
#include "graphikdatei/observation_pass.h"
#include "graphikdatei/point_pass.h"
#include "graphikdatei/value_pass.h"
#include "model/session.h"
#include "temp_file.h"
#include "text/codepage.h"

namespace veldra::testing_support {

/// A session on a graphic file of its own. Contents are given in UTF-8.
class SessionOnFile : public ::testing::Test {
 protected:
    /// Writes the file and points the session to it; reads nothing yet.
    void use_file(std::string_view utf8) {
        session.graphikdatei = folder.file("ve.dat", from_utf8(utf8));
        session.arbeitsdatei_basis = session.graphikdatei;
        session.arbeitsdatei_suffix.clear();
    }

    /// Header pass and point pass.
    void read_points(std::string_view utf8) {
        use_file(utf8);
        kopf_lesen(session);
        punkt_lesen(session);
    }

    /// Header, point and observation pass with a kind of observation.
    void read_observations(std::string_view utf8, std::int16_t obj_beob) {
        read_points(utf8);
        session.obj.obj_beob = obj_beob;
        beob_lesen(session);
    }

    /// Header, point and value pass with a choice of values.
    void read_values(std::string_view utf8, std::int16_t obj_puwe) {
        read_points(utf8);
        session.obj.obj_puwe = obj_puwe;
        derive_value_modes(session.obj);
        wert_lesen(session);
    }

    /// What is in the graphic file now, as UTF-8.
    [[nodiscard]] std::string file_text() const {
        return to_utf8(file_bytes(session.graphikdatei));
    }

    TempFolder folder;
    Session session;
};

}  // namespace veldra::testing_support
