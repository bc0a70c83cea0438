#pragma once
// Tests of what lives on Qt's event loop.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <functional>

#include "support/running_program.h"

namespace veltrix {

/// Has the application object that everything on the event loop needs.
struct WithEvents : ::testing::Test {
    int count = 0;
    QCoreApplication application{count, nullptr};
};

/// Runs the events of the program until the condition holds; false after a limit that only a fault reaches.
inline bool RunUntil(const std::function<bool()>& condition) {
    return WaitFor([&] {
        QCoreApplication::processEvents();
        return condition();
    });
}

}  // namespace veltrix
