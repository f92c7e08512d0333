#pragma once

#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "private_print_service.h"
#include "scripted_printer.h"
#include "windows/qt/qt_application.h"
#include "windows/qt/qt_text_measurer.h"

namespace veldra::test {

/// Starts the service for the whole program: the toolkit asks for its address only once.
inline PrivatePrintService& service() {
    static PrivatePrintService one;
    return one;
}

/// Waits until the service has received this many documents, at most four seconds.
inline void wait_for_jobs(int count) {
    for (int tries = 0; tries < 80 && service().attributes(count).empty(); ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
}

/// Stands in for the built-in device.
inline std::unique_ptr<ScriptedPrinter> file_device() {
    ScriptedDevice device;
    device.name = "PDF-Datei";
    return std::make_unique<ScriptedPrinter>(std::vector<ScriptedDevice>{device});
}

/// Base of the tests that need a queue.
class QueueTest : public veldra_test::QtTest {
 protected:
    void SetUp() override {
        if (!service().trouble().empty()) {
            GTEST_SKIP() << service().trouble();
        }
        qputenv("CUPS_SERVER", service().socket().c_str());
    }

    QtTextMeasurer measurer;
};

}  // namespace veldra::test
