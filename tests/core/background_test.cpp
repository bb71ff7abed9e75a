#include <gtest/gtest.h>

#include <stdexcept>

#include "core/console_host.h"
#include "testing/scripted_host.h"

// Work in the background on the hosts that have no event loop.
namespace norvelis {
namespace {

template <typename T>
class BackgroundTest : public ::testing::Test {
  protected:
    T host;

    /// Whether the work was asked to stop.
    bool RunAndSeeIfCanceled() {
        bool ran = false, canceled = false;
        host.RunInBackground([&](std::stop_token token) {
            ran = true;
            canceled = token.stop_requested();
        });
        EXPECT_TRUE(ran) << "it has ended when the call returns";
        return canceled;
    }
};
using Hosts = ::testing::Types<ConsoleHost, ScriptedHost>;
TYPED_TEST_SUITE(BackgroundTest, Hosts);

TYPED_TEST(BackgroundTest, ItIsCanceledWithItsCommand) {
    bool before = true, after = false;
    this->host.RunCancelable([&] {
        before = this->RunAndSeeIfCanceled();
        this->host.Cancel();
        after = this->RunAndSeeIfCanceled();
    });
    EXPECT_FALSE(before);
    EXPECT_TRUE(after);
    EXPECT_FALSE(this->RunAndSeeIfCanceled());
}

TYPED_TEST(BackgroundTest, WhatItThrowsGoesThrough) {
    EXPECT_THROW(this->host.RunInBackground([](std::stop_token) { throw std::runtime_error("no"); }),
                 std::runtime_error);
}

TYPED_TEST(BackgroundTest, ATokenThatWasTakenEarlierLearnsOfTheCancellation) {
    const std::stop_token token = this->host.Cancellation();
    this->host.Cancel();
    EXPECT_TRUE(token.stop_requested());
}

}  // namespace
}  // namespace norvelis
