#pragma once

#include <gtest/gtest.h>

#include <QTest>

#include "ui/controls/drawing_control.h"

namespace norvelis::ui {

/// Files are read in the background; until then the control shows what it showed before.
inline void UntilShown(const DrawingControl2& control) {
    constexpr int kPatience = 60'000;
    ASSERT_TRUE(QTest::qWaitFor([&control] { return !control.Loading(); }, kPatience));
}

}  // namespace norvelis::ui
