#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "base/failure.h"
#include "drawing/opened_package.h"
#include "drawing/package/package.h"
#include "drawing/package/rich_drawing.h"

// Files that are damaged, or made to do harm: each is refused with its reason, or read as far as it makes
// sense.
namespace norvelis::drawing {
namespace {

using testing::HasSubstr;

/// "" when the bytes are a drawing, otherwise the reason why not.
std::string Refusal(const std::string& bytes) {
    try {
        ReadPackage(bytes);
        return "";
    } catch (const RuntimeFailure& failure) {
        EXPECT_EQ(failure.Number(), FailureNumber::DeviceIoError);
        EXPECT_THAT(failure.what(), HasSubstr("not a drawing: "));
        return failure.what();
    }
}

std::vector<Part> GoodParts() {
    return PartsOf(WritePackage(*RichDrawing()));
}

/// The rich drawing with one part's content changed.
std::string With(const std::string& name, const std::function<void(std::string&)>& change) {
    std::vector<Part> parts = GoodParts();
    bool found = false;
    for (auto& part : parts) {
        if (part.name != name) continue;
        change(part.bytes);
        found = true;
    }
    EXPECT_TRUE(found) << name;
    return Zip(parts);
}
std::string Replaced(const std::string& name, const std::string& from, const std::string& to) {
    return With(name, [&](std::string& bytes) {
        const auto at = bytes.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        bytes.replace(at, from.size(), to);
    });
}

std::string Times(std::size_t count, const std::string& text) {
    std::string result;
    result.reserve(count * text.size());
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

const std::string kPage = "visio/pages/page1.xml";
const std::string kMaster = "visio/masters/master1.xml";

/// A page of these shapes in place of the rich one.
std::string PageOf(const std::string& shapes) {
    return With(kPage, [&](std::string& bytes) {
        bytes = "<PageContents xmlns=\"http://schemas.microsoft.com/office/visio/2012/main\"><Shapes>" +
                shapes + "</Shapes></PageContents>";
    });
}

TEST(HostilePackage, CutOffAnywhere) {
    const std::string good = WritePackage(*RichDrawing());
    for (std::size_t length = 0; length < good.size(); length += length < 200 ? 1 : 97)
        EXPECT_NE(Refusal(good.substr(0, length)), "") << length;
    for (std::size_t length = good.size() - 120; length < good.size(); ++length)
        EXPECT_NE(Refusal(good.substr(0, length)), "") << length;
}

TEST(HostilePackage, BytesFlippedAnywhere) {
    const std::string good = WritePackage(*RichDrawing());
    for (std::size_t at = 0; at < good.size(); at += 53) {
        std::string damaged = good;
        damaged[at] = static_cast<char>(~damaged[at]);
        Refusal(damaged);  // Refused or not, nothing else than a failure may come of it.
    }
}

TEST(HostilePackage, AnyPartMissing) {
    const std::vector<Part> good = GoodParts();
    for (std::size_t left = 0; left < good.size(); ++left) {
        std::vector<Part> parts = good;
        const std::string name = parts[left].name;
        parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(left));
        const std::string refusal = Refusal(Zip(parts));
        const bool needed = name == "[Content_Types].xml" || name == "_rels/.rels" ||
                            name == "visio/document.xml" || name.starts_with("visio/pages/page") ||
                            name.starts_with("visio/masters/") || name == "visio/pages/_rels/pages.xml.rels";
        if (needed) {
            EXPECT_NE(refusal, "") << name;
        }
    }
}

TEST(HostilePackage, AnyPartEmptyOrCutOff) {
    for (const auto& part : GoodParts()) {
        for (const std::size_t length : {std::size_t{0}, std::size_t{1}, part.bytes.size() / 2}) {
            const std::string bytes = With(part.name, [&](std::string& content) { content.resize(length); });
            const bool read = part.name.starts_with("visio/pages/page") || part.name == "visio/document.xml";
            const std::string refusal = Refusal(bytes);
            if (read) {
                EXPECT_NE(refusal, "") << part.name << " " << length;
            }
        }
    }
}

TEST(HostilePackage, Bombs) {
    // 300 MB of blanks in a part, small on disk.
    const std::string bomb = With(kPage, [](std::string& bytes) { bytes.append(260u << 20, ' '); });
    EXPECT_LT(bomb.size(), 4u << 20);
    EXPECT_THAT(Refusal(bomb), HasSubstr("more than any drawing"));
    EXPECT_THAT(Refusal(PageOf(Times(6'000'000, "<a/>"))), HasSubstr("more than any drawing"));
    EXPECT_THAT(Refusal(PageOf("<Shape " + Times(16'000'000, "a='' ") + "/>")),
                HasSubstr("more than any drawing"));
    std::vector<Part> parts = GoodParts();
    for (int i = 0; i < 25000; ++i) parts.push_back({fmt::format("x{}", i), ""});
    EXPECT_THAT(Refusal(Zip(parts)), HasSubstr("more parts"));
}

TEST(HostilePackage, Entities) {
    const std::string kinds[] = {
        "<!DOCTYPE a [<!ENTITY x \"yy\"><!ENTITY z \"&x;&x;&x;&x;\">]>",
        "<!DOCTYPE a SYSTEM \"file:///etc/passwd\">",
    };
    for (const auto& kind : kinds) {
        EXPECT_THAT(
            Refusal(With(kPage, [&](std::string& bytes) { bytes.insert(bytes.find('\n') + 1, kind); })),
            HasSubstr("declares entities"));
    }
    // An entity that nobody declared is a text like another.
    EXPECT_EQ(Refusal(PageOf("<Shape ID='1'><Text>&lol;&#0;&#xFFFFFFFF;</Text></Shape>")), "");
}

TEST(HostilePackage, AbsurdCounts) {
    const std::string shape = "<Shape ID='1'>";
    const std::pair<std::string, const char*> cases[] = {
        {shape + "<Section N='Geometry' IX='-1'/></Shape>", "section number"},
        {shape + "<Section N='Geometry' IX='2147483647'/></Shape>", "section number"},
        {shape + "<Section N='Geometry'><Row IX='99999'/></Section></Shape>", "row number"},
        {shape + "<Section N='Geometry'><Row IX='-5'/></Section></Shape>", "row number"},
        {"<Shape ID='0'/>", "no ID"},
        {"<Shape ID='-7'/>", "no ID"},
        {"<Shape/>", "no ID"},
        {"<Shape ID='1'/><Shape ID='1'/>", "same ID"},
        {"<Shape ID='1' Type='Group'><Shapes><Shape ID='1'/></Shapes></Shape>", "same ID"},
        {"<Shape ID='1' Master='99'/>", "master 99 is missing"},
        {shape + "<Cell N='PinX' V='1e9'/></Shape>", "beyond every page"},
        {shape + "<Cell N='Width' V='-1e300'/></Shape>", "beyond every page"},
        {shape + "<Section N='Geometry'><Row T='LineTo' IX='1'><Cell N='X' V='1e7'/></Row></Section></Shape>",
         "beyond every page"},
        {shape + "<Text>" + std::string(300'000, 'x') + "</Text></Shape>", "more text"},
    };
    for (const auto& [shapes, reason] : cases)
        EXPECT_THAT(Refusal(PageOf(shapes)), HasSubstr(reason)) << reason;

    std::string cells = shape, sections = shape, deep, end;
    for (int i = 0; i < 3000; ++i) {
        cells += fmt::format("<Cell N='c{}' V='1'/>", i);
        sections += fmt::format("<Section N='s{}'/>", i);
        deep += fmt::format("<Shape ID='{}' Type='Group'><Shapes>", i + 1);
        end += "</Shapes></Shape>";
    }
    EXPECT_THAT(Refusal(PageOf(cells + "</Shape>")), HasSubstr("more cells"));
    EXPECT_THAT(Refusal(PageOf(sections + "</Shape>")), HasSubstr("more sections"));
    EXPECT_THAT(Refusal(PageOf(deep + end)), HasSubstr("groups are nested"));
    EXPECT_THAT(Refusal(PageOf(Times(100'000, "<Shapes>") + Times(100'000, "</Shapes>"))),
                testing::IsEmpty());
    EXPECT_THAT(Refusal(Replaced("visio/document.xml", "</FaceNames>",
                                 Times(2000, "<FaceName NameU='x'/>") + "</FaceNames>")),
                HasSubstr("more fonts"));
    EXPECT_THAT(Refusal(Replaced("visio/document.xml", "</StyleSheets>",
                                 Times(2000, "<StyleSheet ID='9'/>") + "</StyleSheets>")),
                HasSubstr("more styles"));
    EXPECT_THAT(Refusal(Replaced("visio/pages/pages.xml", "ID=\"1\"", "ID=\"0\"")), HasSubstr("same ID"));
    EXPECT_THAT(Refusal(Replaced("visio/masters/masters.xml", "ID=\"2\"", "ID=\"1\"")), HasSubstr("same ID"));
}

TEST(HostilePackage, NumbersThatAreNone) {
    const auto bytes = PageOf(
        "<Shape ID='1'><Cell N='PinX' V='nan'/><Cell N='PinY' V='inf'/><Cell N='Width' V='1e999'/>"
        "<Cell N='Height' V=''/><Cell N='Angle'/><Cell N='LineWeight' V='0x10'/><Cell/></Shape>");
    const auto document = ReadPackage(bytes);
    const Shape& shape = *document->pages[0]->shapes[0];
    for (const Name name : {Name::PinX, Name::PinY, Name::Width, Name::Height, Name::Angle, Name::LineWeight})
        EXPECT_EQ(Number(shape, name), 0);
    EXPECT_EQ(WritePackage(*ReadPackage(WritePackage(*document))), WritePackage(*document));
}

TEST(HostilePackage, MastersThatAreMadeOfThemselves) {
    EXPECT_THAT(Refusal(With(kMaster,
                             [](std::string& bytes) {
                                 bytes.replace(bytes.find("Type=\"Shape\""), 12,
                                               "Type=\"Shape\" Master=\"1\"");
                             })),
                HasSubstr("made of itself"));
    Document document;
    AddStandardStyles(document);
    document.AddPage("Page-1");
    constexpr int kMasters = 40;
    for (int i = 0; i < kMasters; ++i) AddBoxMaster(document, "Box" + std::to_string(i));
    for (int i = 0; i < kMasters; ++i)
        document.masters[static_cast<std::size_t>(i)]->shapes[0]->master =
            document.masters[static_cast<std::size_t>((i + 1) % kMasters)].get();
    EXPECT_THAT(Refusal(WritePackage(document)), HasSubstr("made of"));
    document.masters.back()->shapes[0]->master = nullptr;  // A chain without a circle, but far too long.
    EXPECT_THAT(Refusal(WritePackage(document)), HasSubstr("made of"));
}

TEST(HostilePackage, RelationshipsThatLeadAstray) {
    const std::string documentRelations = "visio/_rels/document.xml.rels";
    EXPECT_NE(Refusal(Replaced(documentRelations, "pages/pages.xml", "../../../../etc/passwd")), "");
    EXPECT_NE(Refusal(Replaced(documentRelations, "pages/pages.xml", "masters/masters.xml")), "");
    EXPECT_NE(Refusal(Replaced("_rels/.rels", "visio/document.xml", "docProps/app.xml")), "");
    EXPECT_NE(Refusal(Replaced("visio/pages/_rels/pages.xml.rels", "rId1", "rId9")), "");
    EXPECT_EQ(
        Refusal(Replaced("visio/pages/_rels/page1.xml.rels", "../media/image1.png", "../media/none.png")),
        "");
    // A picture's ending goes into names that we write.
    const auto odd =
        ReadPackage(Replaced("visio/pages/_rels/page1.xml.rels", "../media/image1.png", "page1.xml"));
    EXPECT_EQ(odd->pages[0]->shapes[2]->picture->extension, "xml");
}

// A look-up that searched these lists would run into the time limit of the tests.
TEST(HostilePackage, LongListsAreReadInOneGo) {
    std::string cells;
    for (int i = 0; i < 390; ++i) cells += fmt::format("<Cell N='c{}' V='1'/>", i);
    std::string shapes;
    for (int i = 1; i < 5'000; ++i) shapes += fmt::format("<Shape ID='{}'>{}</Shape>", i, cells);
    EXPECT_EQ(Refusal(PageOf(shapes)), "");
    std::string rows = "<Shape ID='1'><Section N='Geometry'>";
    for (int i = 0; i < 1'000'000; ++i) rows += fmt::format("<Row IX='{}'/>", i % 28'000);
    EXPECT_EQ(Refusal(PageOf(rows + "</Section></Shape>")), "");
    std::string fonts = "<Shape ID='1'><Section N='Character'>";
    for (int i = 0; i < 400'000; ++i)
        fonts += fmt::format("<Row IX='{}'><Cell N='Font' V='f{}'/></Row>", i % 20'000, i % 700);
    EXPECT_EQ(Refusal(PageOf(fonts + "</Section></Shape>")), "");
}

}  // namespace
}  // namespace norvelis::drawing
