#pragma once

#include <QApplication>
#include <memory>

#include <gtest/gtest.h>

#include "pdf/single_faces.h"

namespace veldra_test {

/// The toolkit's application, which fonts and pictures need; one for the whole program. It begins
/// as that of the program does.
inline QApplication& qt_application() {
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    static const auto application = [] {
        veldra::keep_one_file_of_each_face();
        return std::make_unique<QApplication>(count, arguments);
    }();
    return *application;
}

/// Base of the tests that need the application.
class QtTest : public ::testing::Test {
 protected:
    QtTest() { qt_application(); }
};

}  // namespace veldra_test
