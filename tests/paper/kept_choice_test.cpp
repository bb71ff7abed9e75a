#include "paper/kept_choice.h"

#include <gmock/gmock.h>

#include "base/paths.h"
#include "testing/temporary_folder.h"

namespace norvelis::paper {
namespace {

SheetChoice Choice(Fit fit, const char* paper, Turn turn) {
    SheetChoice choice;
    choice.fit = fit;
    choice.paper = PaperNamed(paper);
    choice.turn = turn;
    return choice;
}

TEST(KeptChoice, IsTheSameInWords) {
    SheetChoice grid = Choice(Fit::Grid, "A3", Turn::Landscape),
                scale = Choice(Fit::Scale, "Letter", Turn::Best),
                one = Choice(Fit::OneSheet, "A0", Turn::Portrait);
    grid.columns = 3;
    grid.rows = 2;
    scale.percent = 62.5;
    scale.cropMarks = false;
    one.mayEnlarge = true;
    one.footer = false;
    one.overlap = 0;
    EXPECT_EQ(ChoiceText(grid), "fit grid 3x2, paper A3, turn landscape, overlap 10, marks yes, footer yes");
    for (const SheetChoice& choice : {SheetChoice(), grid, scale, one})
        EXPECT_EQ(ParseChoice(ChoiceText(choice), grid), choice) << ChoiceText(choice);
    EXPECT_EQ(ParseChoice("", scale), scale);
    SheetChoice turned = scale;
    turned.turn = Turn::Portrait;
    EXPECT_EQ(ParseChoice("paper A7, fit grid 0x900,, turn portrait, overlap -3, what ever", scale), turned);
}

TEST(KeptChoice, ADrawingBeginsWithTheSetUpAndKeepsItsOwn) {
    const TemporaryFolder folder;
    const std::string ini = folder.Path("Local.Ini");
    const SheetChoice setUp = Choice(Fit::OneSheet, "A2", Turn::Portrait),
                      own = Choice(Fit::Scale, "A4", Turn::Best);
    EXPECT_EQ(ChoiceFor(ini, "/a=b/x.vsd"), SheetChoice());
    KeepChoiceFor(ini, "/a=b/x.vsd", SheetChoice());
    EXPECT_FALSE(FileExists(ini)) << "nothing is to be remembered";
    KeepSetUpChoice(ini, setUp);
    EXPECT_EQ(ChoiceFor(ini, "/a=b/x.vsd"), setUp);
    KeepChoiceFor(ini, "/a=b/x.vsd", own);
    EXPECT_EQ(ChoiceFor(ini, "/a=b/x.vsd"), own);
    EXPECT_EQ(ChoiceFor(ini, "/a=b/y.vsd"), setUp);
}

}  // namespace
}  // namespace norvelis::paper
