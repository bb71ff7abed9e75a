#include "diagram/common.h"

#include <gtest/gtest.h>

#include "recording_engine.h"

namespace norvelis {
namespace {

constexpr const char* kFlowchart = "Basic Flowchart Shapes (US units).vss";

struct CommonTest : testing::Test {
    std::vector<std::string> reported;
    Reporter report = [this](const std::string& text) { reported.push_back(text); };
    recording::RecordingEngine fake;
    engine::Ref<engine::Application> application = *fake.CreateHidden();
    engine::Ref<engine::Document> drawing = application->Documents()->Add("Basic Flowchart (US Units).vst");
    engine::Ref<engine::Page> page = drawing->Pages()->Item(1);
};

TEST_F(CommonTest, AStencilIsOpenedOnceForAllItsDrops) {
    EXPECT_TRUE(DropShape(report, page, kFlowchart, "Process", 3.5, 4));
    EXPECT_TRUE(DropShape(report, page, kFlowchart, "ANNOTATION", 1, 2));
    EXPECT_EQ(fake.recorder->LinesWith("OpenEx").size(), 1u);
    EXPECT_EQ(fake.recorder->lines.back(), "Page-1.Drop \"Annotation\" at 1, 2 -> Sheet.2");
    EXPECT_TRUE(reported.empty());
}

TEST_F(CommonTest, OnlyAMissingStencilIsReported) {
    EXPECT_FALSE(DropShape(report, page, "Nowhere.vss", "Process", 0, 0));
    EXPECT_EQ(reported, std::vector<std::string>{"Stencil not found: \r\nNowhere.vss"});
    EXPECT_FALSE(DropShape(report, page, kFlowchart, "No such master", 0, 0));
    fake.recorder->FailWhere(".Drop");
    EXPECT_FALSE(DropShape(report, page, kFlowchart, "Process", 0, 0));
    EXPECT_FALSE(DropShape(report, nullptr, kFlowchart, "Process", 0, 0));
    EXPECT_EQ(reported.size(), 1u);
}

TEST(QuoteFormula, DoublesQuotes) {
    EXPECT_EQ(QuoteFormula(""), "\"\"");
    EXPECT_EQ(QuoteFormula("a \"b\""), "\"a \"\"b\"\"\"");
}

}  // namespace
}  // namespace norvelis
