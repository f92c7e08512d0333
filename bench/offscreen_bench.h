#pragma once

#include <QApplication>
#include <string>

#include <benchmark/benchmark.h>

#include "text/user_interface.h"

namespace veldra::bench {

/// Nobody is asked.
class SilentInterface final : public UserInterface {
 public:
    bool message_box(MessageStyle /*style*/, const std::string& /*title*/,
                     const std::string& /*text*/) override {
        return true;
    }
    void set_mouse_pointer(int /*pointer*/) override {}
};

/// What a program of benchmarks that need the toolkit does: runs them all without a display.
inline int run_offscreen(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

}  // namespace veldra::bench
