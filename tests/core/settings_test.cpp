#include "core/settings.h"

#include <gtest/gtest.h>

#include "base/paths.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

TEST(Settings, AFreshStoreGivesTheDefaults) {
    TestApp test;
    EXPECT_EQ(getreportlocation(test.app), "");
    EXPECT_EQ(getvisiolocation(test.app), "");
    EXPECT_EQ(getvisiobackground(test.app), "Background none");
    EXPECT_EQ(getdiagramcolor(test.app), "False");
    EXPECT_EQ(getstartupform(test.app), "");
}

TEST(Settings, SettersAddOrChangeTheOneRow) {
    TestApp test;
    setreportlocation(test.app, "/reports/a");
    setreportlocation(test.app, "");
    EXPECT_EQ(test.app.gConnection->Count("Select count(*) FROM ApplicationSetting"), 1);
    EXPECT_EQ(getreportlocation(test.app), "");
    setvisiobackground(test.app, 4);
    setvisiobackground(test.app, 18);
    setvisiobackground(test.app, -1);
    EXPECT_EQ(getvisiobackground(test.app), "Background rain");
    WriteSetting(test.app, "VISIOBACKGROUND", "7");
    EXPECT_EQ(ReadSetting(test.app, "visiobackground")->value, "7");
    EXPECT_EQ(getvisiobackground(test.app), "Background rain") << "the second value stays";
}

TEST(Settings, ADrawingFolderThatIsGoneReadsAsEmptyAndTheLogTellsOfIt) {
    TestApp test;
    CreateFolder(test.folder.Path("drawings"));
    setvisiolocation(test.app, test.folder.Path("drawings"));
    setvisiolocation(test.app, "");
    EXPECT_EQ(getvisiolocation(test.app), test.folder.Path("drawings"));
    DeleteFolder(test.folder.Path("drawings"));
    EXPECT_EQ(getvisiolocation(test.app), "");
    const std::string log = ReadFile(test.folder.Path("INI/ProcessLog.Txt"));
    EXPECT_NE(
        log.find("Common module ---- getvisiolocation ---- Now in the function.....getvisiolocation\r\n"),
        std::string::npos);
    EXPECT_NE(log.find("visio location....." + test.folder.Path("drawings") + "\r\n"), std::string::npos);
}

}  // namespace
}  // namespace norvelis
