#include "core/store_wait.h"

#include <gtest/gtest.h>

#include "testing/scripted_host.h"

namespace norvelis {
namespace {

TEST(StoreWaitTest, TriesAgainUntilTheStoreIsFreeOrThePersonCancels) {
    ScriptedHost host;
    int tries = 0;
    const auto freeAfter = [&tries](int locked) {
        if (++tries <= locked) throw LockedStore("records.mdb");
        return tries;
    };
    EXPECT_EQ(WaitForStore(host, [&] { return freeAfter(3); }), 4);
    EXPECT_EQ(host.yields, 3);
    EXPECT_THROW(WaitForStore(host, [] { throw RuntimeFailure(FailureNumber::DiskFull); }), RuntimeFailure);
    EXPECT_EQ(host.yields, 3) << "waits for nothing else";

    host.cancelAtYield = 5;
    tries = 0;
    EXPECT_FALSE(host.RunCancelable([&] { WaitForStore(host, [&] { return freeAfter(1'000'000); }); }));
    EXPECT_EQ(tries, 2);
}

}  // namespace
}  // namespace norvelis
