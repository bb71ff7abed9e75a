#include "diagram/print_drawing.h"

#include "diagram/shape_text.h"
#include "drawing_fixture.h"

namespace norvelis {
namespace {

class PrintDrawingTest : public DrawingTest {
  protected:
    std::vector<std::string> Printed(PrintMode mode, int step = 1) {
        lines.clear();
        test.host.messages.clear();
        const bool printed = PrintDocument(test.host, *document, mode, step);
        EXPECT_EQ(test.host.Texts(),
                  printed ? std::vector<std::string>{"Visio document has been sent to the Print"}
                          : std::vector<std::string>{});
        return lines;
    }

    PageRef page = NewPage();
    engine::Ref<engine::Document> document = page->Document();
};

TEST_F(PrintDrawingTest, TheDocumentEveryNthPageOrTheOddOnes) {
    engine.recorder->pageCount = 5;
    EXPECT_THAT(Printed(PrintMode::Document), ElementsAre("Document.Print"));
    EXPECT_THAT(Printed(PrintMode::EveryNthPage, 3),
                ElementsAre("Document.PrintPage 1", "Document.PrintPage 4"));
    EXPECT_THAT(Printed(PrintMode::EveryNthPage), SizeIs(5));
    EXPECT_THAT(Printed(PrintMode::OddPages),
                ElementsAre("Document.PrintPage 1", "Document.PrintPage 3", "Document.PrintPage 5"));
    engine.recorder->FailWhere("PrintPage 3");
    EXPECT_THAT(Printed(PrintMode::OddPages),
                ElementsAre("Document.PrintPage 1", "Document.PrintPage 3 FAILED"));
}

TEST_F(PrintDrawingTest, APageBeyondTheLastPrintsNothingWithoutAWord) {
    engine.recorder->pageCount = 2;
    EXPECT_TRUE(PrintPage(*document, 2));
    EXPECT_TRUE(PrintPage(*document, 3));
    EXPECT_THAT(lines, ElementsAre("Document.PrintPage 2"));
    EXPECT_THAT(test.host.messages, IsEmpty());
}

TEST_F(PrintDrawingTest, FontChangeTakesEveryShapeOfEveryPage) {
    const auto stencil = drawing.VisioApp->Documents()->OpenEx("Basic Flowchart Shapes (US units).vss", 4);
    page->Drop(stencil->Masters()->Item("Process"), 1, 1);
    page->Drop(stencil->Masters()->Item("Process"), 2, 1);
    engine.recorder->pageCount = 2;
    lines.clear();
    FontChange(*document);
    EXPECT_THAT(lines,
                ElementsAre("Sheet.1!Char.Size.Formula = =6 pt.", "Sheet.2!Char.Size.Formula = =6 pt.",
                            "Sheet.1!Char.Size.Formula = =6 pt.", "Sheet.2!Char.Size.Formula = =6 pt."));
}

}  // namespace
}  // namespace norvelis
