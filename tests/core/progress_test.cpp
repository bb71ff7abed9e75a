#include "core/progress.h"

#include <gtest/gtest.h>

#include "testing/scripted_host.h"

namespace norvelis {
namespace {

TEST(ProgressBars, TextStopsAtTheStepBeforeTheLast) {
    ScriptedHost host;
    Progress progress(host);
    progress.BResetprogressbar(Bar::BackgroundValue, 10);
    for (int i = 0; i < 10; ++i) progress.BStepprogressbar(Bar::BackgroundValue, 1, "EMPLOYEE");
    EXPECT_EQ(progress[Bar::BackgroundValue].Text, "90% Complete. Loading EMPLOYEE");
    EXPECT_EQ(progress[Bar::BackgroundValue].Value, 10);
}

TEST(ProgressBars, TotalBeyondMaxAndMaxOfZeroDoNoHarm) {
    ScriptedHost host;
    Progress progress(host);
    progress.BResetprogressbar(Bar::TreeviewValue, 0);
    progress.BStepprogressbar(Bar::TreeviewValue, 1, "A");
    EXPECT_EQ(progress[Bar::TreeviewValue].Text, "");
    progress.BResetprogressbar(Bar::TreeviewValue, 2);
    for (int i = 0; i < 5; ++i) progress.BStepprogressbar(Bar::TreeviewValue, 1, "A");
    EXPECT_EQ(progress[Bar::TreeviewValue].Value, 2);
    EXPECT_EQ(progress[Bar::TreeviewValue].Tag, 5);
}

}  // namespace
}  // namespace norvelis
