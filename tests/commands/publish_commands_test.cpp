#include "commands/publish_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/paths.h"
#include "core/places.h"
#include "drawing/automation/create_engine.h"
#include "drawing/export/export.h"
#include "testing/extracted_schema.h"
#include "testing/schema_rows.h"

namespace norvelis::commands {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

class PublishCommandsTest : public testing::Test {
  protected:
    std::optional<std::string> Publish(std::deque<std::optional<std::string>> inputs) {
        test.host.inputs = std::move(inputs);
        test.host.messages.clear();
        return mnu_Publish(test.app, tools);
    }
    std::string LastWords() const {
        return test.host.messages.empty() ? std::string() : test.host.messages.back().text;
    }

    TestApp test;
    std::unique_ptr<engine::DrawingEngine> engine =
        drawing::MakeDrawingEngine({NORVELIS_APP "/Stencils", test.app.AppPath(places::kSnapshots), nullptr});
    PublishTools tools{*engine, drawing::render::LinkedSvg};
    const std::string chosen = test.folder.Path("chosen");
};

TEST_F(PublishCommandsTest, TheMenuAsksOnlyWhatItMust) {
    EXPECT_EQ(Publish({chosen}), std::nullopt);
    EXPECT_THAT(LastWords(), HasSubstr("no schema in the dictionary"));

    SchemaRows(*test.app.gConnection, "FIRST").Entry("OFFICE");
    EXPECT_EQ(Publish({std::nullopt}), std::nullopt) << "no folder is chosen";
    EXPECT_THAT(LastWords(), IsEmpty());

    // A folder of the schema's name in the chosen one; the folder itself when it is an edition.
    const std::string page = chosen + "/FIRST/index.html";
    EXPECT_EQ(Publish({chosen}), page);
    EXPECT_EQ(Publish({chosen + "/FIRST"}), page);
    test.host.answers = {Answer::No};
    EXPECT_EQ(Publish({chosen}), std::nullopt) << "the person does not want to see it";

    SchemaRows(*test.app.gConnection, "SECOND").Entry("DEPOT");
    EXPECT_EQ(Publish({"second", chosen}), chosen + "/SECOND/index.html");
    EXPECT_THAT(ReadFile(chosen + "/SECOND/index.html"), HasSubstr("#record-DEPOT"));
    EXPECT_EQ(Publish({"THIRD", chosen}), std::nullopt);
    EXPECT_THAT(LastWords(), HasSubstr("There is no schema THIRD"));
}

TEST_F(PublishCommandsTest, WhatFailsIsSaidAndLeavesTheFormerEdition) {
    SchemaRows(*test.app.gConnection, "FIRST").Entry("OFFICE");
    ASSERT_TRUE(Publish({chosen}));
    const std::string file = chosen + "/FIRST/index.html", before = ReadFile(file);
    SchemaRows(*test.app.gConnection, "FIRST").Record("DEPOT");

    const auto asSvg = tools.asSvg;
    tools.asSvg = [](const std::string&, const engine::ShapeLinks&) -> std::string {
        throw RuntimeFailure(FailureNumber::DiskFull, "no space");
    };
    EXPECT_EQ(Publish({chosen}), std::nullopt);
    EXPECT_THAT(LastWords(), HasSubstr("Schema FIRST was not published. Disk full: no space"));
    EXPECT_EQ(ReadFile(file), before);

    tools.asSvg = asSvg;
    test.host.cancelAtYield = test.host.yields + 5;
    EXPECT_FALSE(test.host.RunCancelable([this] { Publish({chosen}); }));
    EXPECT_EQ(ReadFile(file), before);

    const auto random = test.app.random;
    test.host.cancelAtYield = 0;
    EXPECT_TRUE(Publish({chosen}));
    EXPECT_NE(ReadFile(file), before);
    EXPECT_EQ(Random(test.app.random).Bits(), Random(random).Bits())
        << "colors of other drawings are no longer random";
}

}  // namespace
}  // namespace norvelis::commands
