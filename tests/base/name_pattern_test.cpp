#include "base/name_pattern.h"

#include <gtest/gtest.h>

namespace norvelis {
namespace {

TEST(FitsPattern, StarsAndQuestionMarks) {
    const struct {
        const char *name, *pattern;
        bool fits;
    } cases[] = {
        {"CLIENT", "client ", true},
        {"CLIENT", "CLIEN", false},
        {"CLIENT", "*", true},
        {"CLIENT", "c*", true},
        {"CLIENT", "*ent", true},
        {"CLIENT", "cl*t", true},
        {"CLIENT", "*l*e*", true},
        {"CLIENT", "?LIENT", true},
        {"CLIENT", "CLIENT?", false},
        {"CLIENT", "*x*", false},
        {"DAY-DAY-LOG", "*DAY-L*", true},
        {"AAAB", "*AAB", true},
        {"CLIENT", "", false},
        {"", "*", true},
        {"A*B", "A?B", true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FitsPattern(c.name, c.pattern), c.fits) << c.name << " " << c.pattern;
}

}  // namespace
}  // namespace norvelis
