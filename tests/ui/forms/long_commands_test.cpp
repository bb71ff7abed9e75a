#include "ui/forms/long_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPushButton>
#include <stdexcept>

#include "testing/scripted_host.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LongCommandsTest : public ::testing::Test {
  protected:
    ScriptedHost host;
    std::vector<std::string> failures;
    LongCommands commands{host,
                          [this](const std::exception& failure) { failures.push_back(failure.what()); }};
    const LongCommand first{"First", Screen::Settings}, second{"Second", Screen::Listview};
};

TEST_F(LongCommandsTest, OneAtATimeAndTheOtherIsRefusedInWords) {
    int done = 0;
    commands.Run(first, [&] {
        commands.Run(second, [&] { ++done; });
        EXPECT_EQ(commands.ProgressScreen(), Screen::Settings);
    });
    EXPECT_EQ(done, 0);
    EXPECT_THAT(host.Texts(), ElementsAre("First is still running."));
    commands.Run(second, [&] { ++done; });
    EXPECT_EQ(done, 1);
    EXPECT_EQ(host.messages.size(), 1u);
    EXPECT_EQ(commands.ProgressScreen(), Screen::Listview) << "what it reported last is still to be shown";
}

TEST_F(LongCommandsTest, ControlsWaitThoughTheyAreMadeMeanwhile) {
    QWidget before, meanwhile;
    commands.DisableWhileBusy(&before);
    EXPECT_TRUE(before.isEnabled());
    commands.Run(first, [&] {
        commands.DisableWhileBusy(&meanwhile);
        EXPECT_FALSE(before.isEnabled());
        EXPECT_FALSE(meanwhile.isEnabled());
    });
    EXPECT_TRUE(before.isEnabled());
    EXPECT_TRUE(meanwhile.isEnabled());
}

TEST_F(LongCommandsTest, AFailureIsHandedOnAndTheNextCommandRuns) {
    commands.Run(first, [] { throw std::runtime_error("broken"); });
    EXPECT_THAT(failures, ElementsAre("broken"));
    EXPECT_FALSE(commands.Busy());
    bool ran = false;
    commands.Run(second, [&] { ran = true; });
    EXPECT_TRUE(ran);
}

TEST_F(LongCommandsTest, ABoxSaysWhatACanceledCommandLeaves) {
    commands.Cancel();
    EXPECT_FALSE(host.Cancellation().stop_requested()) << "none is running";
    QPushButton cancel;
    commands.CancelsBy(&cancel);
    EXPECT_TRUE(cancel.isHidden());
    bool ran = false;
    commands.Run(first, [&] {
        EXPECT_FALSE(cancel.isHidden());
        host.SetAfterCancel("All is as it was before.");
        cancel.click();
        EXPECT_FALSE(cancel.isEnabled());
        commands.Run(second, [] {});
        host.Yield();
        ran = true;
    });
    EXPECT_FALSE(ran);
    EXPECT_TRUE(cancel.isHidden());
    EXPECT_TRUE(cancel.isEnabled());
    EXPECT_THAT(host.Texts(),
                ElementsAre("First is still running.", "First was canceled.\r\nAll is as it was before."));
    EXPECT_THAT(host.statuses, ElementsAre("Canceling...", ""));
    EXPECT_THAT(failures, IsEmpty());
    commands.Run(second, [&] {
        host.Yield();
        ran = true;
    });
    EXPECT_TRUE(ran);
}

}  // namespace
}  // namespace norvelis::ui
