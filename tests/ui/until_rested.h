#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>
#include <algorithm>

namespace norvelis::ui {

/// What a screen shows of a node comes when the mouse has rested on it for a while.
inline void UntilRested(const QWidget& form) {
    constexpr int kPatience = 60'000;
    const auto timers = form.findChildren<QTimer*>("rest");
    const auto rested = [&] {
        return std::none_of(timers.begin(), timers.end(),
                            [](const QTimer* timer) { return timer->isActive(); });
    };
    ASSERT_TRUE(QTest::qWaitFor(rested, kPatience));
}

}  // namespace norvelis::ui
