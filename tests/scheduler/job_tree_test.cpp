#include "scheduler/job_tree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "base/failure.h"
#include "scheduler/job_search.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Job JobOf(std::int64_t id, const std::string& name) {
    Job job;
    job.scheduleid = id;
    job.name = name;
    job.address = job.tel = " ";
    job.email = name + "@example.org";
    job.nextschedule = ToDateTime({2026, 12, 1, 6, 0, 0});
    job.idmsreport = "/r/empschm.txt";
    return job;
}

TEST(JobTree, FieldsThatAreNotBlankInTheirOrder) {
    Random random(1);
    Job job = JobOf(7, "nightly");
    EXPECT_THAT(JobTree({job}, random).Fields(0),
                ElementsAre("nightly@example.org", "12/1/2026 6:00:00 AM", "/r/empschm.txt", "NO"));
    job.address = "a";
    job.tel = "t";
    job.fax = "f";
    job.processed = true;
    job.visiofile = "v";
    job.nextschedule = std::nullopt;
    EXPECT_THAT(JobTree({job}, random).Fields(0),
                ElementsAre("a", "t", "f", "nightly@example.org", "/r/empschm.txt", "YES", "v"));
}

TEST(JobTree, TheKeyOfAJobHoldsItsIdAndOthersHoldNone) {
    Random random(1);
    const JobTree tree({JobOf(7, "a"), JobOf(32767, "b"), JobOf(32768, "c")}, random);
    EXPECT_EQ(ScheduleIdIn(tree.Key(0)), 7);
    EXPECT_EQ(ScheduleIdIn(tree.Key(1)), 32767);
    EXPECT_THROW(ScheduleIdIn(tree.Key(2)), RuntimeFailure);
    EXPECT_EQ(tree.FieldKey(0, 0).substr(0, 3), "S**");
    std::set<std::string> unique;
    for (std::size_t job = 0; job < tree.Size(); ++job) {
        unique.insert(tree.Key(job).substr(tree.Key(job).find("*X*") + 3));
        for (std::size_t field = 0; field < 8; ++field) {
            EXPECT_EQ(ScheduleIdIn(tree.FieldKey(job, field)), std::nullopt);
            unique.insert(tree.FieldKey(job, field).substr(3));
        }
    }
    EXPECT_EQ(unique.size(), 27u);
}

TEST(JobSearch, GoesThroughBothTreesAndTellsTheEnd) {
    Random random(1);
    ScriptedHost host;
    JobSearch search;
    const JobTree unprocessed({JobOf(1, "Payroll"), JobOf(2, "stock")}, random);
    const JobTree processed({JobOf(3, "PAYROLL old")}, random);
    const auto click = [&](const char* text) -> std::string {
        const auto hit = search.Click(host, unprocessed, processed, text);
        if (!hit) return "none";
        return std::string(hit->processed ? "done " : "due ") + std::to_string(hit->job) +
               (hit->field ? " field " + std::to_string(*hit->field) : "");
    };
    EXPECT_EQ(click(" pay "), "due 0");
    EXPECT_EQ(search.Caption(), "Next");
    EXPECT_EQ(click("pay"), "due 0 field 0");
    EXPECT_EQ(click("pay"), "done 0");
    EXPECT_EQ(click("pay"), "done 0 field 0");
    EXPECT_THAT(host.messages, IsEmpty());
    EXPECT_EQ(click("pay"), "none");
    EXPECT_EQ(search.Caption(), "Search");
    EXPECT_EQ(click("pay"), "due 0") << "the next click starts at the top";
    search.TextChanged();
    EXPECT_EQ(click("stock"), "due 1");
    EXPECT_EQ(click("Type Here"), "none");
    EXPECT_EQ(click(" "), "none");
    EXPECT_THAT(host.Texts(), ElementsAre("End of search for record: PAY", "Please type the record to locate",
                                          "Please type the record to locate"));
}

}  // namespace
}  // namespace norvelis
