#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QSvgRenderer>
#include <pugixml.hpp>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

#include <QPainter>

#include "base/failure.h"
#include "base/paths.h"
#include "drawing/export/export.h"
#include "drawing/export/pdf.h"
#include "drawing/export/svg.h"
#include "drawing/package/package.h"
#include "drawing/render/build_scene.h"
#include "drawing/render/foreign.h"
#include "drawing/render/open.h"
#include "drawing/render/paint.h"
#include "sample_drawing.h"
#include "testing/foreign_drawing.h"
#include "testing/temporary_folder.h"

namespace norvelis::drawing::render {
namespace {

class ExportTest : public testing::Test {
  protected:
    ExportTest() {
        NeedFonts();
        Shape& box = sample_.AddBox(1.25, 2, 1.5, 0.5, "#ff0000");
        box.text = TextRuns{{"EMPLOYEE & <sons>"}};
        box.cells.SetText(Name::Comment, "holds \"people\" & more");
        SampleDrawing::AddLink(box, "http://example.org/?a=1&b=2", "the record");
        Shape& other = sample_.AddBox(3, 1, 1, 0.5, "#0000ff");
        other.text = TextRuns{{"OFFICE"}};
        sample_.AddLine(1, 1, 2, 0, 0.02, "#00aa00").cells.Set(Name::LinePattern, 2).Set(Name::EndArrow, 4);
    }

    Scene Build() { return BuildScene(fonts_, sample_.document, sample_.First()); }

    std::string Save(const std::string& name) {
        const std::string path = folder_.Path(name);
        WriteFile(path, WritePackage(sample_.document));
        return path;
    }

    SampleDrawing sample_;
    FontLibrary fonts_;
    TemporaryFolder folder_;
};

TEST_F(ExportTest, SvgHoldsTextsInOrderWithTipAndLink) {
    pugi::xml_document svg;
    ASSERT_TRUE(svg.load_string(SvgText(Build()).c_str(), pugi::parse_default | pugi::parse_ws_pcdata));
    std::vector<std::string> texts;
    for (const auto& span : svg.select_nodes("//tspan")) texts.push_back(span.node().text().as_string());
    EXPECT_THAT(texts, testing::ElementsAre("EMPLOYEE & <sons>", "OFFICE"));
    const auto links = svg.select_nodes("//a");
    ASSERT_EQ(links.size(), 1u);
    EXPECT_STREQ(links[0].node().attribute("xlink:href").value(), "http://example.org/?a=1&b=2");
    EXPECT_STREQ(links[0].node().attribute("xlink:title").value(), "the record");
    EXPECT_STREQ(svg.select_node("//a/g/title").node().text().as_string(), "holds \"people\" & more");
}

TEST_F(ExportTest, SvgShowsWhatThePictureShows) {
    const Scene scene = Build();
    const QImage ours = Picture(scene, 72);
    QImage theirs(ours.size(), QImage::Format_RGB32);
    theirs.fill(Qt::black);
    QSvgRenderer renderer(QByteArray::fromStdString(SvgText(scene)));
    QPainter painter(&theirs);
    renderer.render(&painter);
    painter.end();
    int different = 0;
    for (int y = 0; y < ours.height(); ++y) {
        for (int x = 0; x < ours.width(); ++x)
            different += std::abs(qGray(ours.pixel(x, y)) - qGray(theirs.pixel(x, y))) > 100;
    }
    EXPECT_LT(different, ours.width() * ours.height() / 100);
    EXPECT_EQ(theirs.pixelColor(40, 60).name(), "#ff0000");
}

TEST_F(ExportTest, PdfHasThePagesSizeAndTheLink) {
    const std::string bytes = PdfText({Build()});
    QPDF pdf;
    pdf.processMemoryFile("test", bytes.data(), bytes.size());
    const auto pages = QPDFPageDocumentHelper(pdf).getAllPages();
    ASSERT_EQ(pages.size(), 1u);
    auto page = pages[0].getObjectHandle();
    EXPECT_NEAR(page.getKey("/MediaBox").getArrayItem(2).getNumericValue(), 4 * 72, 1);
    EXPECT_NEAR(page.getKey("/MediaBox").getArrayItem(3).getNumericValue(), 3 * 72, 1);
    auto links = page.getKey("/Annots");
    ASSERT_EQ(links.getArrayNItems(), 1);
    EXPECT_EQ(links.getArrayItem(0).getKey("/A").getKey("/URI").getStringValue(),
              "http://example.org/?a=1&b=2");
    const auto area = links.getArrayItem(0).getKey("/Rect").getArrayAsRectangle();
    EXPECT_NEAR(area.llx, 36, 3);
    EXPECT_NEAR(area.ury, 2.25 * 72, 3);
}

TEST_F(ExportTest, EqualDrawingsGiveEqualFiles) {
    EXPECT_EQ(PdfText({Build()}), PdfText({Build()}));
    EXPECT_EQ(SvgText(Build()), SvgText(Build()));
}

TEST_F(ExportTest, TheEndingSaysTheForm) {
    const std::string drawing = Save("drawing.vsd");
    for (const auto& [ending, begins] : {std::pair{".svg", "<?xml"},
                                         {".png", "\x89PNG"},
                                         {".pdf", "%PDF"},
                                         {".vsdx", "PK"},
                                         {".PNG", "\x89PNG"}}) {
        const std::string out = folder_.Path(std::string("out") + ending);
        Export(drawing, out);
        EXPECT_TRUE(ReadFile(out).starts_with(begins)) << ending;
    }
    EXPECT_EQ(ReadFile(folder_.Path("out.vsdx")), ReadFile(drawing));
}

TEST_F(ExportTest, RefusalsNameTheirReasonAndWriteNothing) {
    const std::string drawing = Save("drawing.vsd"), out = folder_.Path("out.png"),
                      odd = folder_.Path("out.bmp");
    const auto number = [](auto action) {
        try {
            action();
        } catch (const RuntimeFailure& failure) {
            return static_cast<int>(failure.Number());
        }
        return 0;
    };
    EXPECT_EQ(number([&] { Export(drawing, odd); }), 5);
    EXPECT_EQ(number([&] { Export(drawing, out, 2); }), 9);
    EXPECT_EQ(number([&] { Export(folder_.Path("missing.vsd"), out); }), 53);
    WriteFile(folder_.Path("nonsense.vsd"), "no drawing at all");
    EXPECT_EQ(number([&] { Export(folder_.Path("nonsense.vsd"), out); }), 57);
    EXPECT_FALSE(FileExists(out));
    EXPECT_FALSE(FileExists(odd));
}

TEST_F(ExportTest, DrawingsOfOtherProgramsAreShownButNotRewritten) {
    const std::string path = folder_.Path("old.vdx"), out = folder_.Path("old.png");
    WriteFile(path, kForeignDrawing);
    const auto pages = OpenPages(path);
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_NEAR(pages[0].size.width(), 4 * kUnitsPerInch, 10);
    EXPECT_EQ(Picture(pages[0], 72).pixelColor(2 * 72, 108).name(), "#ff0000");
    Export(path, out);
    EXPECT_EQ(QImage(QString::fromStdString(out)).pixelColor(4 * 72, 216).name(), "#ff0000");
    Export(path, folder_.Path("old.pdf"));
    Export(path, folder_.Path("old.svg"));
    EXPECT_THROW(Export(path, folder_.Path("old.vsdx")), RuntimeFailure);
}

TEST_F(ExportTest, AnIndependentReaderShowsOurPackages) {
    const auto pages = ForeignPages(WritePackage(sample_.document));
    ASSERT_TRUE(pages);
    ASSERT_EQ(pages->size(), 1u);
    const QImage theirs = Picture(pages->front(), 72), ours = Picture(Build(), 72);
    ASSERT_NEAR(theirs.width(), ours.width(), 1);
    for (const QPoint point : {QPoint(40, 60), QPoint(190, 135), QPoint(10, 10)})
        EXPECT_EQ(theirs.pixelColor(point).name(), ours.pixelColor(point).name());
    EXPECT_THAT(pages->front().foreign->svg, testing::HasSubstr("OFFICE"));
}

}  // namespace
}  // namespace norvelis::drawing::render
