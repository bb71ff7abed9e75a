#include "scheduler/job_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/paths.h"
#include "scheduler/store_queue.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

class JobFolderTest : public testing::Test {
  protected:
    TestApp test;
    const AppState& app = test.app;
};

TEST_F(JobFolderTest, ANameThatLeadsElsewhereIsRefusedBeforeAnythingIsMade) {
    std::filesystem::create_directories(test.folder.Path("elsewhere"));
    for (const std::string& name : {std::string("../x"), std::string("a/b"), std::string("a\\b"),
                                    std::string("."), std::string(".."), std::string("x."), std::string("x "),
                                    std::string(300, 'x'), std::string(), std::string("a\0b", 3)}) {
        try {
            MakeJobFolder(app, name);
            FAIL() << name;
        } catch (const RuntimeFailure& failure) {
            EXPECT_EQ(failure.Number(), FailureNumber::PathNotFound) << name;
            EXPECT_EQ(failure.Detail(), name);
        }
    }
    EXPECT_FALSE(FolderExists(test.folder.Path("batchjobs")));

    const std::string plain = MakeJobFolder(app, "Pay; roll");
    EXPECT_TRUE(FolderExists(plain));
    EXPECT_EQ(MakeJobFolder(app, "PAY; ROLL"), plain) << "as paths are compared";
    std::filesystem::create_directory_symlink(test.folder.Path("elsewhere"),
                                              test.folder.Path("batchjobs/link"));
    WriteFile(test.folder.Path("batchjobs/file"), "");
    EXPECT_THROW(MakeJobFolder(app, "link"), RuntimeFailure);
    EXPECT_THROW(MakeJobFolder(app, "LINK"), RuntimeFailure);
    EXPECT_THROW(MakeJobFolder(app, "file"), RuntimeFailure);
}

TEST_F(JobFolderTest, WhatAKilledRunLeftHalfMadeIsRemoved) {
    const std::string folder = MakeJobFolder(app, "x") + "/";
    for (const char* name :
         {"x.mdb.new12", "x.mdb.new12-journal", "S.vsd.new7", "x.mdb", "S.new7", "x.mdb.new"})
        WriteFile(folder + name, "");
    MakeJobFolder(app, "x");
    EXPECT_THAT(FilesIn(folder), testing::ElementsAre("S.new7", "x.mdb", "x.mdb.new"));
}

TEST_F(JobFolderTest, AFolderHasOneOwnerAtATime) {
    auto first = JobClaim::Take(app, "Nightly");
    ASSERT_TRUE(first);
    EXPECT_FALSE(JobClaim::Take(app, "NIGHTLY"));
    auto other = JobClaim::Take(app, "nightly2");
    EXPECT_TRUE(other);
    other = std::move(first);
    EXPECT_FALSE(JobClaim::Take(app, "nightly"));
    other.reset();
    EXPECT_TRUE(JobClaim::Take(app, "nightly"));
}

TEST_F(JobFolderTest, TheQueueGivesNoRowOfAFolderThatIsTaken) {
    Job job;
    job.email = "dba@example.org";
    job.idmsreport = "/r/x.txt";
    std::vector<std::int64_t> ids;
    for (const char* name : {"a", " A", "b"}) {
        job.name = name;
        CreateJobs(test.app, job, {"1/1/2026"}, ids);
    }
    StoreQueue desktop(test.app), runner(test.app);
    const DateTime now = test.clock.now;
    ASSERT_EQ(desktop.TakeDue(now)->scheduleid, ids[0]);
    ASSERT_EQ(runner.TakeDue(now)->scheduleid, ids[2]);
    EXPECT_FALSE(StoreQueue(test.app).TakeDue(now));
    desktop.MarkProcessed(*FindJob(*test.app.gConnection, ids[0]), "/r/x.vsd");
    desktop.Release();
    EXPECT_EQ(runner.TakeDue(now)->scheduleid, ids[1]) << "comes back to it";
    runner.Release();
    runner.PassOver(ids[1]);
    EXPECT_EQ(runner.TakeDue(now)->scheduleid, ids[2]);
    runner.MarkProcessed(Job{999, "gone", {}, {}, {}, {}, {}, "", false, {}}, "x");
}

}  // namespace
}  // namespace norvelis
