#include "scheduler/tick_machine.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

/// One row that is due, for ever.
struct OneJob : JobQueue {
    Job job;
    int taken = 0;
    std::vector<std::string> marked;

    OneJob() {
        job.name = " nightly ";
        job.idmsreport = " /r/empschm.text ";
    }
    std::optional<Job> TakeDue(DateTime) override {
        ++taken;
        return job;
    }
    void Release() override { --taken; }
    void MarkProcessed(const Job&, const std::string& visiofile) override { marked.push_back(visiofile); }
};

class TickMachineTest : public testing::Test {
  protected:
    OneJob jobs;
    StillClock clock;
    int runs = 0, stateChanges = 0;
    std::string words;
    std::function<void()> duringRun = [] {};
    TickMachine machine{jobs, clock, Surroundings()};

    TickMachine::Surroundings Surroundings() {
        TickMachine::Surroundings result;
        result.run = [this](const Job& due) {
            RunAndMark(jobs, due, [this](const Job& job) {
                EXPECT_EQ(job.name, "nightly");
                ++runs;
                duringRun();
            });
        };
        result.stateChanged = [this] { ++stateChanges; };
        result.failed = [this](const std::string& text) { words = text; };
        return result;
    }
    void TickTimes(int times) {
        for (int i = 0; i < times; ++i) machine.Tick();
    }
};

TEST_F(TickMachineTest, ATickWithinARunIsLost) {
    duringRun = [this] {
        TickTimes(100);
        machine.Stop();
        TickTimes(100);
        machine.Start();
        TickTimes(100);
    };
    machine.Start();
    TickTimes(17);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(machine.PollTicks(), 1);
    EXPECT_EQ(machine.Ticks(), 17);
    EXPECT_FALSE(machine.SchedulesBusy());
    EXPECT_EQ(jobs.marked, std::vector<std::string>{"/r/empschm.tvsd"});
    TickTimes(15);
    EXPECT_EQ(runs, 1);
    TickTimes(1);
    EXPECT_EQ(runs, 2);
}

TEST_F(TickMachineTest, WhateverEndsARunGivesTheRowBack) {
    duringRun = [] { throw RuntimeFailure(FailureNumber::DiskFull, "there"); };
    machine.Start();
    TickTimes(20);
    EXPECT_EQ(runs, 1);
    EXPECT_FALSE(machine.IsStarted());
    EXPECT_EQ(stateChanges, 2);
    EXPECT_NE(words.find("there"), std::string::npos);

    words.clear();
    duringRun = [] { throw Canceled(); };
    machine.Start();
    machine.Tick();
    EXPECT_EQ(runs, 2) << "no rest after a failure";
    EXPECT_FALSE(machine.IsStarted());
    EXPECT_EQ(words, "");
    EXPECT_TRUE(jobs.marked.empty());
    EXPECT_EQ(jobs.taken, 0);
}

TEST_F(TickMachineTest, CharactersOfTheReportAreNotBytes) {
    EXPECT_EQ(VisioFileOf("/r/\xC3\xA9.t\xC3\xA9x"), "/r/\xC3\xA9.vsd");
    EXPECT_EQ(VisioFileOf("txt"), "vsd");
    EXPECT_THROW(VisioFileOf("\xC3\xA9t"), RuntimeFailure);
}

}  // namespace
}  // namespace norvelis
