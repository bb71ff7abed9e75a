#include "commands/schedule_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/paths.h"
#include "scheduler/schedule_xml.h"
#include "testing/test_store.h"

namespace norvelis::commands {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class ScheduleCommandsTest : public ::testing::Test {
  protected:
    TestApp test;
    AppState& app = test.app;
    Connection& store = *app.gConnection;
    Job job;

    ScheduleCommandsTest() {
        job.name = "nightly";
        job.email = "dba@example.org";
        job.idmsreport = "/r/empschm.txt";
    }
    std::vector<std::string> TakeTexts() {
        auto texts = test.host.Texts();
        test.host.messages.clear();
        return texts;
    }
    std::size_t Rows() { return ListJobs(store).size(); }
};

TEST_F(ScheduleCommandsTest, CreateBooksEachDateAndAsksAboutPastOnesOnce) {
    EXPECT_TRUE(CreateSchedules(app, job, {"12/1/2026", "12/2/2026"}));
    EXPECT_THAT(TakeTexts(), ElementsAre("Creating Schedule completed...", "Schedule(s) added"));
    EXPECT_EQ(Rows(), 2u);
    test.host.answers = {Answer::No};
    EXPECT_FALSE(CreateSchedules(app, job, {"11/1/2026", "11/2/2026"}));
    EXPECT_EQ(test.host.messages.at(0).defaultAnswer, Answer::Yes);
    EXPECT_THAT(TakeTexts(), ElementsAre(StartsWith("Sunday 11/1/2026 lies in the past")));
    EXPECT_EQ(Rows(), 2u);
    EXPECT_TRUE(CreateSchedules(app, job, {}));
    EXPECT_THAT(TakeTexts(), ElementsAre("Creating Schedule completed...", "Schedule(s) added"));
}

TEST_F(ScheduleCommandsTest, AFailureInTheMiddleSaysHowManyRowsThereAre) {
    store.Execute(
        "CREATE TRIGGER full BEFORE INSERT ON schedules WHEN (SELECT count(*) FROM schedules) = 2 "
        "BEGIN SELECT RAISE(ABORT, 'no space'); END");
    EXPECT_TRUE(CreateSchedules(app, job, {"12/1/2026", "12/2/2026", "12/3/2026"}));
    EXPECT_THAT(TakeTexts(), ElementsAre(HasSubstr("\r\n2 of 3 dates are booked.")));
    EXPECT_EQ(Rows(), 2u);
}

TEST_F(ScheduleCommandsTest, UpdateNeedsADateAndARow) {
    std::vector<std::int64_t> ids;
    CreateJobs(app, job, {"12/1/2026"}, ids);
    job.scheduleid = ids[0];
    job.processed = true;
    EXPECT_FALSE(UpdateSchedule(app, job, "soon"));
    EXPECT_TRUE(UpdateSchedule(app, job, "12/9/2026"));
    EXPECT_EQ(DueText(*FindJob(store, ids[0])), "12/9/2026");
    EXPECT_TRUE(RunSchedulesAgain(app, ids));
    EXPECT_FALSE(FindJob(store, ids[0])->processed);
    DeleteJob(store, ids[0]);
    EXPECT_TRUE(UpdateSchedule(app, job, "12/9/2026"));
    EXPECT_THAT(TakeTexts(), ElementsAre("The next schedule is no date: soon", "Schedule Updated",
                                         "Run schedule id:1 again?", "There is no schedule id:1 any more."));
}

TEST_F(ScheduleCommandsTest, DeleteAsksOnceForAllAndAbsorbsAFailure) {
    std::vector<std::int64_t> ids;
    CreateJobs(app, job, {"12/1/2026", "12/2/2026", "12/3/2026", "12/4/2026"}, ids);
    test.host.answers = {Answer::No};
    EXPECT_FALSE(DeleteSchedules(app, {ids[0]}));
    EXPECT_TRUE(DeleteSchedules(app, {ids[0]}));
    EXPECT_TRUE(DeleteSchedules(app, {ids[0], ids[1], ids[2]}));
    EXPECT_THAT(TakeTexts(),
                ElementsAre("Proceed to Delete schedule id:1?", "Proceed to Delete schedule id:1?",
                            "Schedule id:1 deleted.", "Proceed to Delete 3 schedules?",
                            "There is no schedule id:1 any more.", "2 schedules deleted."));
    const auto other = Connection::Open(ConnectionString(test.StorePath()));
    other->Execute("BEGIN IMMEDIATE");
    EXPECT_TRUE(DeleteSchedules(app, {ids[3]}));
    EXPECT_THAT(TakeTexts(), ElementsAre("Proceed to Delete schedule id:4?", HasSubstr("locked")));
    EXPECT_EQ(Rows(), 1u);
}

TEST_F(ScheduleCommandsTest, AReportMustBeOne) {
    const std::string other = test.folder.Path("other.txt"),
                      sample = NORVELIS_SOURCE "/app/reportfiles/empschm.text";
    WriteFile(other, "no report\n");
    test.host.inputs = {other, sample, std::nullopt};
    EXPECT_EQ(ChooseReport(app), std::nullopt);
    EXPECT_THAT(TakeTexts(), ElementsAre("Invalid IDMS Report File. Action terminated"));
    EXPECT_EQ(ChooseReport(app), sample);
    EXPECT_EQ(ChooseReport(app), std::nullopt);
    EXPECT_THAT(TakeTexts(), IsEmpty());
}

TEST_F(ScheduleCommandsTest, DefinitionsAreFilesThatHoldASchedule) {
    const std::string path = test.folder.Path("daily.xml");
    test.host.inputs = {path, path};
    SaveDefinition(app, LoadSchedule("<schedule Occurs_DailyNum=\"2\"/>"));
    EXPECT_EQ(GetAttribute(OpenDefinition(app).value(), "Occurs_DailyNum", ""), "2");
    for (const char* text : {"<schedule", "<calendar/>", ""}) {
        WriteFile(path, text);
        test.host.inputs = {path};
        EXPECT_FALSE(OpenDefinition(app)) << text;
        EXPECT_THAT(TakeTexts(), ElementsAre(StartsWith("No schedule in " + path + ":\r\n"))) << text;
    }
}

TEST_F(ScheduleCommandsTest, DrawingsAreLookedForInTheFolderOfTheJobAlone) {
    const std::string folder = test.folder.Path("batchjobs/nightly");
    CreateFolder(folder);
    for (const char* file : {"B.VSD", "a.vsd", "a.vsdx", "nightly.mdb"}) WriteFile(folder + "/" + file, "");
    WriteFile(test.folder.Path("outside.vsd"), "");
    EXPECT_THAT(DrawingsOfJob(app, "nightly"), ElementsAre(folder + "/B.VSD", folder + "/a.vsd"));
    EXPECT_THAT(DrawingsOfJob(app, "other"), IsEmpty());
    for (const char* name : {"..", "../..", "a\\..\\..", ".", ""})
        EXPECT_THROW(DrawingsOfJob(app, name), RuntimeFailure) << name;
    job.visiofile = " /r/empschm.vsd";
    EXPECT_EQ(WhereTheDrawingIs(app, job), "Visio File NOT Found:/r/empschm.vsd\r\nThe run has drawn:\r\n" +
                                               folder + "/B.VSD\r\n" + folder + "/a.vsd");
    job.name = "other";
    EXPECT_THAT(WhereTheDrawingIs(app, job), HasSubstr("There is no drawing of a run in "));
    job.name = "../x";
    EXPECT_THAT(WhereTheDrawingIs(app, job), HasSubstr("NOT Found:/r/empschm.vsd\r\nPath not found: ../x"));
}

}  // namespace
}  // namespace norvelis::commands
