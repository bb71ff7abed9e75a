#include "diagram/page_background.h"
#include "diagram/page_layout.h"
#include "drawing_fixture.h"

namespace norvelis {
namespace {

class PageTest : public DrawingTest {};

TEST_F(PageTest, BackgroundTitleLayerAndLayoutInTheirOrder) {
    setvisiobackground(app, 8);
    formatPageBackground(drawing, NewPage(), "EMPSCHM");
    EXPECT_THAT(
        lines,
        ElementsAre("Documents.OpenEx \"Backgrounds (US units).vss\", 6", "Masters.Item \"Background world\"",
                    "Document.Drop \"Background world\" at 0, 0", "Master \"Background world\".Open",
                    "Sheet.-1!1,5,4.FormulaU = \"\"", "Master \"Background world\".Close",
                    "Documents.OpenEx \"Borders and Titles (US units).vss\", 6",
                    "Masters.Item \"Title block deco\"", "Layers.Add \"Background Design\"",
                    "Page-1.Drop \"Background world\" at 0, 0 -> Sheet.1", "Sheet.1.SendToBack",
                    "Layer \"Background Design\".Add Sheet.1, 0",
                    "Page-1.Drop \"Title block deco\" at 0, 0 -> Sheet.2", "Sheet.2.Text = \"EMPSCHM\"",
                    "Layer \"Background Design\".Add Sheet.2, 0",
                    "Sheet.2!1,1,0.FormulaU = Width * 0.2 + 0.625 + 0.25 in",
                    "Sheet.2!1,1,1.FormulaU = ThePage!PageHeight-Height * 0.1 - 0.125 - 0.25 in",
                    "ThePage!Layers[Background Design].7.FormulaU = TRUE",
                    "Sheet.2!Char.Size.Formula = =6 pt.", "ThePage!1,24,8.Result(63) = 1",
                    "ThePage!1,24,9.Result(63) = 5", "Page.Layout", "Page.ResizeToFitContents",
                    "Page.CenterDrawing", "Page.ResizeToFitContents", "Page.CenterDrawing"));
    EXPECT_THAT(screen.texts, ElementsAre("Formating Page EMPSCHM"));
}

TEST_F(PageTest, AMissingMasterCostsTheBackgroundOnlyAMissingStencilTheStep) {
    drawing.options.background = "Background of no stencil";
    formatPageBackground(drawing, NewPage(), "T");
    EXPECT_THAT(LinesWith(".Drop"), ElementsAre("Page-1.Drop \"Title block deco\" at 0, 0 -> Sheet.1"));
    EXPECT_THAT(LinesWith("Page.Layout"), SizeIs(1));

    for (const char* stencil : {"Borders and Titles (US units).vss", "Backgrounds (US units).vss"}) {
        engine.recorder->stencils.erase(stencil);
        test.host.messages.clear();
        formatPageBackground(drawing, NewPage(), "T");
        EXPECT_THAT(test.host.Texts(), ElementsAre(std::string("Stencil not found: \r\n") + stencil));
        EXPECT_THAT(LinesWith("Page"), IsEmpty());
    }
}

TEST_F(PageTest, AllPagesOfADrawing) {
    const PageRef page = NewPage();
    EXPECT_TRUE(SaveWithBackground(drawing, *page->Document(), "/drawings/EMPSCHM.vsd"));
    EXPECT_EQ(lines.front(), "Document.FooterLeft = &d &t");
    EXPECT_EQ(lines.back(), "Document.SaveAs /drawings/EMPSCHM.vsd");
    EXPECT_THAT(LinesWith("1,1,0"), ElementsAre(HasSubstr("Width * 0.2 + 0.425 + 0.25 in")));
    EXPECT_THAT(LinesWith("Text"), ElementsAre("Sheet.2.Text = \"EMPSCHM\""));
    EXPECT_THAT(LinesWith("Layout"), IsEmpty());
    EXPECT_THAT(LinesWith("Char.Size"), IsEmpty());
}

TEST_F(PageTest, EveryLayoutWritesItsCells) {
    const std::string row = "ThePage!1,24,";
    const struct {
        int index;
        std::string place, depth, route, fourth;
    } cases[] = {
        {1, "8.ResultIU = 3", "10.ResultIU = 2", "9.ResultIU = 2", "29.ResultIU = 2"},
        {2, "8.ResultIU = 3", "10.ResultIU = 3", "9.ResultIU = 1", "29.ResultIU = 1"},
        {3, "8.ResultIU = 3", "10.ResultIU = 3", "9.ResultIU = 22", "29.ResultIU = 2"},
        {4, "8.ResultIU = 1", "10.ResultIU = 1", "9.ResultIU = 3", "29.ResultIU = 1"},
        {5, "8.ResultIU = 2", "10.ResultIU = 1", "9.ResultIU = 1", "29.ResultIU = 2"},
        {6, "8.ResultIU = 6", "10.ResultIU = 2", "9.ResultIU = 21", "29.ResultIU = 2"},
        {7, "8.ResultIU = 6", "10.ResultIU = 2", "9.ResultIU = 0", "1.ResultIU = 1"},
        {8, "8.ResultIU = 0", "10.ResultIU = 0", "9.ResultIU = 0", "29.ResultIU = 0"},
        {-1, "8.ResultIU = 0", "10.ResultIU = 0", "9.ResultIU = 0", "29.ResultIU = 0"},
    };
    for (const auto& c : cases) {
        ApplyLayout(test.host, *NewPage(), c.index);
        EXPECT_THAT(lines, ElementsAre(row + c.place, row + c.depth, row + c.route, row + c.fourth,
                                       "Page.Layout", "Page.ResizeToFitContents", "Page.CenterDrawing"))
            << c.index;
    }
    EXPECT_EQ(LayoutIndex("circulardeep"), 7);
    for (const char* name : {"-Default Layout-", "default layout", "Default"})
        EXPECT_EQ(LayoutIndex(name), 0) << name;
    EXPECT_EQ(LayoutIndex("Other"), std::nullopt);
}

}  // namespace
}  // namespace norvelis
