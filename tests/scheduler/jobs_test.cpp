#include "scheduler/jobs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/paths.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class JobsTest : public testing::Test {
  protected:
    TestApp test;
    Connection& store = *test.app.gConnection;

    static Job Details(const std::string& name) {
        Job job;
        job.name = name;
        job.email = "dba@example.org";
        job.idmsreport = "/reports/empschm.txt";
        return job;
    }
    std::vector<std::int64_t> Create(const Job& details, const std::vector<std::string>& times) {
        std::vector<std::int64_t> ids;
        CreateJobs(test.app, details, times, ids);
        return ids;
    }
    static std::vector<std::int64_t> IdsOf(const std::vector<Job>& jobs) {
        std::vector<std::int64_t> ids;
        for (const Job& job : jobs) ids.push_back(job.scheduleid);
        return ids;
    }
};

TEST_F(JobsTest, EachDateBecomesARow) {
    const auto ids = Create(Details("nightly"), {"12/1/2026 6:00:00 AM", "no date", "12/2/2026"});
    ASSERT_EQ(ids.size(), 2u);
    const Job job = FindJob(store, ids[0]).value();
    EXPECT_EQ(job.name, "nightly");
    EXPECT_EQ(job.address, " ");
    EXPECT_EQ(job.tel, " ");
    EXPECT_EQ(job.email, "dba@example.org");
    EXPECT_EQ(job.fax, std::nullopt);
    EXPECT_EQ(job.visiofile, std::nullopt);
    EXPECT_FALSE(job.processed);
    EXPECT_EQ(GeneralDateText(job.nextschedule.value()), "12/1/2026 6:00:00 AM");
    EXPECT_EQ(GeneralDateText(FindJob(store, ids[1])->nextschedule.value()), "12/2/2026");
    EXPECT_THAT(
        ReadFile(test.folder.Path("INI/ProcessLog.Txt")),
        HasSubstr("Form Scheduler ---- General message ---- Schedule: nightly For time:12/1/2026 6:00:00 AM "
                  "Built"));
    EXPECT_TRUE(Create(Details("none"), {}).empty());
}

TEST_F(JobsTest, NamesAreAnyText) {
    for (const std::string& name : {std::string("it's a \"job\""), std::string("line\r\nbreak"),
                                    std::string("'; delete FROM schedules; --"), std::string(100'000, 'x')}) {
        const auto ids = Create(Details(name), {"12/1/2026"});
        EXPECT_EQ(FindJob(store, ids.at(0))->name, name);
    }
    EXPECT_EQ(ListJobs(store).size(), 4u);
}

TEST_F(JobsTest, DueIsWhatLiesBeforeNowInTheOrderOfBooking) {
    const auto b =
        Create(Details("b"), {"11/24/2026 8:29:59 AM", "11/24/2026 8:30:00 AM", "11/24/2026 8:30:01 AM"});
    const auto a = Create(Details("a"), {"1/1/2020", "1/2/2020"});
    EXPECT_THAT(IdsOf(ListJobs(store)), ElementsAre(a[0], a[1], b[0], b[1], b[2]));
    EXPECT_THAT(IdsOf(DueJobs(store, test.clock.now)), ElementsAre(b[0], a[0], a[1]));
    Job run = FindJob(store, a[0]).value();
    run.processed = true;
    ASSERT_TRUE(UpdateJob(store, run));
    EXPECT_THAT(IdsOf(DueJobs(store, test.clock.now)), ElementsAre(b[0], a[1]));
    ASSERT_TRUE(RunAgain(store, a[0]));
    EXPECT_THAT(IdsOf(DueJobs(store, test.clock.now)), ElementsAre(b[0], a[0], a[1]));
}

// A second that comes out of other sums than the one stored is still the same second.
TEST_F(JobsTest, TheMomentItselfIsNeverDue) {
    store.Execute("PRAGMA synchronous = OFF");  // no row here has to outlive the machine
    for (int second = 0; second < 86'400; second += 211) {
        const DateTime moment = ToDateTime({2026, 11, 24, 0, 0, second});
        Job job = Details("x");
        const auto ids = Create(job, {GeneralDateText(moment)});
        EXPECT_TRUE(DueJobs(store, 46350 + second * (1.0 / 86400)).empty()) << second;
        EXPECT_EQ(DueJobs(store, 46350 + (second + 1) * (1.0 / 86400)).size(), 1u) << second;
        ASSERT_TRUE(DeleteJob(store, ids.at(0)));
    }
}

TEST_F(JobsTest, UpdateChangesOneRowOfAName) {
    const auto ids = Create(Details("job"), {"12/1/2026", "12/2/2026"});
    Job job = FindJob(store, ids[0]).value();
    job.name = "renamed";
    job.address = std::nullopt;
    job.tel = "";
    job.fax = "not written";
    job.nextschedule = ParseDateTime("12/24/2026 6:00:00 PM");
    job.processed = true;
    job.visiofile = "/drawings/a.vsd";
    ASSERT_TRUE(UpdateJob(store, job));
    const Job stored = FindJob(store, ids[0]).value();
    EXPECT_EQ(stored.name, "renamed");
    EXPECT_EQ(stored.address, " ");
    EXPECT_EQ(stored.tel, "");
    EXPECT_EQ(stored.fax, std::nullopt);
    EXPECT_EQ(GeneralDateText(stored.nextschedule.value()), "12/24/2026 6:00:00 PM");
    EXPECT_TRUE(stored.processed);
    EXPECT_EQ(stored.visiofile, "/drawings/a.vsd");
    EXPECT_EQ(FindJob(store, ids[1])->name, "job");
}

TEST_F(JobsTest, ARowDeletedMeanwhileIsReported) {
    const auto ids = Create(Details("job"), {"12/1/2026", "12/2/2026"});
    Job job = FindJob(store, ids[0]).value();
    EXPECT_TRUE(DeleteJob(store, ids[0]));
    EXPECT_FALSE(DeleteJob(store, ids[0]));
    EXPECT_FALSE(UpdateJob(store, job));
    EXPECT_FALSE(RunAgain(store, ids[0]));
    EXPECT_EQ(FindJob(store, ids[0]), std::nullopt);
    EXPECT_THAT(IdsOf(ListJobs(store)), ElementsAre(ids[1]));
    EXPECT_NE(Create(Details("job"), {"12/1/2026"}).at(0), ids[0]) << "an id never comes back";
}

TEST_F(JobsTest, WhatHasToBeFilledInIsAskedForInItsOrder) {
    Job job;
    const auto words = [&job](std::string_view nextSchedule) -> std::string {
        const auto missing = MissingInput(job, nextSchedule);
        return missing ? missing->words : "";
    };
    job.tel = job.email = " ";
    EXPECT_EQ(words(" "), "Name required");
    job.name = " n ";
    EXPECT_EQ(words(" "), "Report Name required");
    job.idmsreport = "r";
    EXPECT_EQ(words(" "), "Must Enter TEL or Email");
    job.tel = "1";
    EXPECT_EQ(words(" "), "Next Schedule date missing");
    job.tel = std::nullopt;
    job.email = "e";
    EXPECT_EQ(words("12/1/2026"), "");
}

// A failure in the middle says which rows there are, and they stay.
TEST_F(JobsTest, ALockedStoreRefusesAndKeepsWhatItHas) {
    const auto ids = Create(Details("job"), {"12/1/2026"});
    const auto other = Connection::Open(ConnectionString(test.StorePath()));
    other->Execute("BEGIN IMMEDIATE");
    std::vector<std::int64_t> more;
    try {
        CreateJobs(test.app, Details("late"), {"12/2/2026"}, more);
        ADD_FAILURE();
    } catch (const RuntimeFailure& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("locked by another program"));
    }
    EXPECT_TRUE(more.empty());
    EXPECT_THROW(DeleteJob(store, ids[0]), RuntimeFailure);
    other->Execute("ROLLBACK");
    EXPECT_THAT(IdsOf(ListJobs(store)), ElementsAre(ids[0]));
    EXPECT_TRUE(DeleteJob(store, ids[0]));
}

}  // namespace
}  // namespace norvelis
