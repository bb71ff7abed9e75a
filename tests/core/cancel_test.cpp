#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>

#include "testing/scripted_host.h"

namespace norvelis {
namespace {

using ::testing::ElementsAre;

TEST(Cancel, ACommandEndsAtTheTurnAtWhichThePersonCancels) {
    ScriptedHost host;
    host.cancelAtYield = 3;
    std::vector<int> done;
    EXPECT_FALSE(host.RunCancelable([&] {
        host.SetAfterCancel("Nothing is done.");
        for (int i = 1; i <= 5; ++i) {
            host.Yield();
            done.push_back(i);
            host.SetAfterCancel(std::to_string(i) + " done.");
        }
    }));
    EXPECT_THAT(done, ElementsAre(1, 2));
    EXPECT_EQ(host.AfterCancel(), "2 done.");
    EXPECT_TRUE(host.RunCancelable([&] { host.Yield(); })) << "the next one is not canceled";
    EXPECT_EQ(host.AfterCancel(), "All is as it was before.");
}

TEST(Cancel, OutsideOfACommandItEndsNothing) {
    ScriptedHost host;
    host.Cancel();
    EXPECT_NO_THROW(host.Yield());
    EXPECT_TRUE(host.RunCancelable([&] { host.Yield(); })) << "it was meant for no later one";
}

TEST(Cancel, AFailureGoesThroughAndEndsTheCommand) {
    ScriptedHost host;
    EXPECT_THROW(host.RunCancelable([] { throw std::runtime_error("broken"); }), std::runtime_error);
    host.Cancel();
    EXPECT_NO_THROW(host.Yield());
}

/// Handles an event in each turn.
class BusyHost : public ScriptedHost {
  public:
    std::function<void()> event = [] {};

  private:
    void Turn() override { event(); }
};

TEST(Cancel, WhatAnEventStartsMeanwhileRunsToItsEnd) {
    BusyHost host;
    int events = 0;
    bool inEvent = false;
    host.event = [&] {
        if (inEvent) return;
        inEvent = true;
        host.Cancel();
        const clsHourglass browsing(host);
        host.RunInBackground([](std::stop_token) {});
        host.Yield();
        ++events;
        inEvent = false;
    };
    bool afterwards = false;
    EXPECT_FALSE(host.RunCancelable([&] {
        host.RunInBackground([](std::stop_token) {});
        EXPECT_EQ(events, 1) << "work in the background is not left half done";
        host.Yield();
        afterwards = true;
    }));
    EXPECT_EQ(events, 2);
    EXPECT_FALSE(afterwards);
}

TEST(Cancel, ACommandInsideAnEventIsCanceledItself) {
    BusyHost host;
    bool ended = true;
    bool first = true;
    host.event = [&] {
        if (!std::exchange(first, false)) return;
        ended = host.RunCancelable([&] {
            host.Cancel();
            host.Yield();
        });
    };
    host.Yield();
    EXPECT_FALSE(ended);
}

TEST(Cancel, TheWaitCursorGoesAlthoughItsFirstTurnCancels) {
    ScriptedHost host;
    host.cancelAtYield = 1;
    EXPECT_FALSE(host.RunCancelable([&] { const clsHourglass hourglass(host); }));
    EXPECT_EQ(host.waitCursor, 0);
}

}  // namespace
}  // namespace norvelis
