#pragma once

#include <gtest/gtest.h>

#include "commands/lifecycle.h"
#include "fake_measurer.h"
#include "network_builder.h"
#include "plot/plot_page.h"
#include "recording_interface.h"
#include "scripted_printer.h"

namespace veldra::test {

/// A working printer with A4 paper, of which 5 mm on each side cannot be printed on, and a scale of
/// 1:1000, at which a millimetre of paper is a metre of ground. Upright with a binding margin on
/// the left, the net area is 184.5 mm wide and 274.5 mm high, 15 mm from the left and 0.5 mm from
/// the top of the printable area. The zero point is (1000, 2000).
class PlotFixture : public testing::Test {
 protected:
    PlotFixture() {
        show_nothing(session);
        session.printer.drucker_ok = table_true;
        PlotSettings& plot = session.plot;
        plot.plot_massstab = 0.001;
        plot.plot_ausrichtung = 1;
        plot.plot_heftrand = 2;
        plot.plot_null_rechts = 1000;
        plot.plot_null_hoch = 2000;
        session.titel[0].setTitelText("Netz");
        set_sheets(1, 1);
        ComputePaperArea(session, desk);
    }

    void set_sheets(std::int16_t columns, std::int16_t rows) {
        session.plot.plot_blatt_auto = table_false;
        session.plot.plot_blatt_rechts = columns;
        session.plot.plot_blatt_hoch = rows;
    }

    /// A place among the sheets of the session.
    [[nodiscard]] SheetPlace place(std::int16_t column, std::int16_t row) const {
        return {column, session.plot.plot_blatt_rechts, row, session.plot.plot_blatt_hoch};
    }

    LegendSize measure_legend() {
        PaperTextOnDesk text(session, measurer, &printer);
        return ComputeLegendSize(session, text);
    }

    FakeMeasurer measurer;
    ScriptedPrinter printer;
    RecordingInterface ui;
    Session session;
    int drawn = 0;
    Desk desk{measurer, ui, [this] { ++drawn; }, &printer};
};

}  // namespace veldra::test
