#include "browse/next_step.h"

#include <gmock/gmock.h>

namespace norvelis {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SplitNextStep, CutsAtCommasAndTrimsTheListAsAWhole) {
    EXPECT_THAT(SplitNextStep(""), IsEmpty());
    EXPECT_THAT(SplitNextStep("   "), IsEmpty());
    EXPECT_THAT(SplitNextStep(" JOB "), ElementsAre("JOB"));
    EXPECT_THAT(SplitNextStep("EXPERTISE,STRUCTURE,JOB"), ElementsAre("EXPERTISE", "STRUCTURE", "JOB"));
    EXPECT_THAT(SplitNextStep("A , B,,C,"), ElementsAre("A ", " B", "", "C", ""));
}

}  // namespace
}  // namespace norvelis
