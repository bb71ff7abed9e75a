#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "drawing/opened_package.h"
#include "drawing/package/package.h"
#include "drawing/package/rich_drawing.h"
#include "drawing/package_rules.h"

namespace norvelis::drawing {
namespace {

using testing::Contains;
using testing::HasSubstr;

struct DrawingFault {
    const char* expected;
    std::function<void(Document&)> damage;
};

TEST(PackageRules, FindWhatIsWrongWithADrawing) {
    const auto page = [](Document& document) -> Page& { return *document.pages[0]; };
    const auto first = [](Document& document) -> Shape& { return *document.pages[0]->shapes[0]; };
    const DrawingFault cases[] = {
        {"a shape is not there",
         [&](Document& d) {
             page(d).connects.push_back({1, "BeginX", 9, 77, "PinX", 3});
         }},
        {"BeginX is",
         [&](Document& d) {
             page(d).connects.push_back({1, "BeginX", 9, 2, "PinX", 3});
         }},
        {"FromPart",
         [&](Document& d) {
             page(d).connects.push_back({1, "EndX", 9, 2, "PinX", 3});
         }},
        {"there is no layer 7", [&](Document& d) { first(d).cells.SetText(Name::LayerMember, "7"); }},
        {"names a shape that is not there",
         [&](Document& d) { first(d).cells.Set(Name::PinX, 1, "Sheet.99!PinX"); }},
        {"tp 5 has no row", [&](Document& d) { first(d).text->back().tabs = 5; }},
        {"does not state RouteStyle", [&](Document& d) { page(d).sheet.cells.Remove(Name::RouteStyle); }},
        {"No Style does not state LineJumpCode",
         [](Document& d) { d.FindStyle("No Style")->cells.Remove(Name::LineJumpCode); }},
        {"two styles 3", [](Document& d) { d.styles.back()->id = 3; }},
        {"two masters", [](Document& d) { d.masters[1]->nameU = d.masters[0]->nameU; }},
        {"a colour entry 3", [](Document& d) { d.colors[3] = {}; }},
        {"line",
         [&](Document& d) {
             first(d).cells.Set(Name::BegTrigger, 2, "x").Set(Name::EndTrigger, 2, "x").Set(Name::BeginX, 1);
             first(d).cells.Set(Name::BeginY, 1).Set(Name::EndX, 2).Set(Name::EndY, 2).Set(Name::PinX, 9);
         }},
    };
    for (const auto& each : cases) {
        auto document = RichDrawing();
        each.damage(*document);
        EXPECT_THAT(PackageFaults(WritePackage(*document)), Contains(HasSubstr(each.expected)));
    }
}

TEST(PackageRules, FindWhatNoSchemaAllows) {
    const std::string page = "visio/pages/page1.xml", windows = "visio/windows.xml";
    const struct {
        std::string part, from, to, expected;
    } cases[] = {
        {page, "<Shape ID=\"1\"", "<Shape ID=\"one\"", "Shape ID is one"},
        {page, "<Shape ID=\"1\"", "<Shape", "Shape without ID"},
        {page, "Type=\"Shape\"", "Kind=\"Shape\"", "the unknown attribute Kind"},
        {page, "<Text>", "<Data3/><Text>", "Text is in the wrong place in Shape"},
        {page, "N=\"Character\"", "N=\"Letters\"", "the unknown section Letters"},
        {page, "N=\"Geometry\" IX=\"0\"", "N=\"Geometry\"", "the number of a section Geometry"},
        {page, "T=\"Ellipse\"", "T=\"Circle\"", "a row Circle in Geometry"},
        {page, "<Row N=\"Row_1\"", "<Row IX=\"0\"", "a row of Hyperlink without name or number"},
        {page, "<cp IX=\"1\"/>", "<cp IX=\"2\"/>", "skip to cp 2"},
        {page, "V=\"12\" U=\"STR\"", "V=\"twelve\"", "the text \"twelve\" in Value"},
        {page, "V=\"Times New Roman\"", "V=\"Helvetica\"", "the font Helvetica is not listed"},
        {page, "GUARD(", "GUARDED(", "the unknown function GUARDED"},
        {page, "TEXTWIDTH(TheText))", "TEXTWIDTH(TheText)", "does not close"},
        {windows, "<ShowGrid>0</ShowGrid>", "", ""},
        {windows, "<ShowGrid>0", "<ShowGrid>none", "ShowGrid is none"},
        {windows, "<ShowRulers>1</ShowRulers><ShowGrid>0</ShowGrid>",
         "<ShowGrid>0</ShowGrid><ShowRulers>1</ShowRulers>", "ShowRulers is in the wrong place"},
        {windows, "ViewScale=\"-1\"", "ViewScale=\"fit\"", "Window ViewScale is fit"},
    };
    for (const auto& each : cases) {
        std::vector<Part> parts = PartsOf(WritePackage(*RichDrawing()));
        for (Part& part : parts) {
            if (part.name != each.part) continue;
            const auto at = part.bytes.find(each.from);
            ASSERT_NE(at, std::string::npos) << each.from;
            part.bytes.replace(at, each.from.size(), each.to);
        }
        const auto faults = PackageFaults(Zip(parts));
        if (each.expected.empty()) {
            EXPECT_THAT(faults, testing::IsEmpty()) << each.from;
        } else {
            EXPECT_THAT(faults, Contains(HasSubstr(each.expected))) << each.from;
        }
    }
}

TEST(PackageRules, FindWhatIsWrongWithTheParts) {
    const std::vector<Part> good = PartsOf(WritePackage(*RichDrawing()));
    ASSERT_GT(good.size(), 10u);
    const auto without = [&good](const std::string& name) {
        std::vector<Part> parts;
        for (const auto& part : good) {
            if (part.name != name) parts.push_back(part);
        }
        return Zip(parts);
    };
    EXPECT_THAT(PackageFaults(without("[Content_Types].xml")), Contains(HasSubstr("begins with")));
    EXPECT_THAT(PackageFaults(without("visio/masters/master1.xml")), Contains(HasSubstr("not there")));
    EXPECT_THAT(PackageFaults(without("visio/media/image1.png")), Contains(HasSubstr("not there")));
    EXPECT_THAT(PackageFaults(without("visio/_rels/document.xml.rels")),
                Contains(HasSubstr("nothing leads to")));
    std::vector<Part> more = good;
    more.push_back({"visio/more.txt", "text"});
    EXPECT_THAT(PackageFaults(Zip(more)), Contains(HasSubstr("no content type")));
    EXPECT_THAT(PackageFaults("PK nothing"), testing::ElementsAre("no archive"));
}

}  // namespace
}  // namespace norvelis::drawing
