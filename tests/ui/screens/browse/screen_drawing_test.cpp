#include <gtest/gtest.h>

#include <QScrollBar>

#include "base/paths.h"
#include "drawing/package/package.h"
#include "testing/schema_rows.h"
#include "ui/controls/c_tree_view.h"
#include "ui/controls/drawing_control.h"
#include "ui/forms/drawing_panel.h"
#include "ui/ui_app.h"
#include "ui/until_shown.h"

namespace norvelis::ui {
namespace {

TEST(ScreenDrawing, TheTreeIsNotLeftScrolledSideways) {
    UiApp ui;
    {
        SchemaRows rows(*ui.app.gConnection, "DEEP");
        constexpr int kDepth = 40;
        rows.Entry("R0", "R1");
        for (int i = 1; i < kDepth; ++i) rows.Record("R" + std::to_string(i), "R" + std::to_string(i + 1));
        rows.Entry("R" + std::to_string(kDepth));  // Which the draw follows to its deepest place.
    }
    ui.Start();
    auto* tree = ui.Find<cTreeView>("Tview");
    QScrollBar& bar = *tree->horizontalScrollBar();
    ASSERT_GT(bar.maximum(), 0);
    for (const int before : {0, 5}) {
        tree->Select(0);
        bar.setValue(before);
        int farthest = 0;
        const auto watch = QObject::connect(&bar, &QScrollBar::valueChanged,
                                            [&](int value) { farthest = std::max(farthest, value); });
        ui.Choose("mnu_Draw_Fancy_Single");
        QObject::disconnect(watch);
        EXPECT_GT(farthest, before) << "it follows the boxes";
        EXPECT_EQ(bar.value(), before);
    }
}

TEST(ScreenDrawing, PagesAndColorsAreChosenKeptAndDrawn) {
    UiApp ui;
    ui.Start();
    ui.Choose("mnu_Classic_Extract_Report");
    const auto drawn = [&ui] {
        auto& control = *ui.Find<DrawingControl2>("DrawingControl2");
        UntilShown(control);
        return std::pair(control.Src().toStdString().substr(ui.folder.Path("visio files/EMPSCHM/").size()),
                         control.PageCount());
    };
    const std::pair<std::string, int> whole{"EMPSCHM.vsd", 1}, byArea{"EMPSCHM by area.vsd", 3};
    ui.Choose("mnu_Draw_Fancy_Single");
    EXPECT_EQ(drawn(), whole) << "as usual";
    ui.Choose("mnuPageForArea");
    ui.Choose("mnuBoxesByMode");
    ui.Choose("mnu_Draw_Fancy_Single");
    EXPECT_EQ(drawn(), byArea);
    EXPECT_EQ(ui.Find<DrawingControl2>("DrawingControl2")->Page().Find("location mode").shapes.size(), 1u)
        << "the legend says what the colors mean";

    DeleteFile(ui.folder.Path("visio files/EMPSCHM/EMPSCHM.vsd"));
    ui.frame->Context().request(ShowInTree{{FindKind::Record, "OFFER", "EMPSCHM", "OFFER", {}}});
    EXPECT_EQ(drawn(), byArea);
    EXPECT_EQ(ui.Find<DrawingControl2>("DrawingControl2")->PageName(), "STOCK-AREA");

    ui.Start();
    EXPECT_TRUE(ui.Find<QAction>("mnuPageForArea")->isChecked());
    EXPECT_TRUE(ui.Find<QAction>("mnuBoxesByMode")->isChecked());
    EXPECT_TRUE(ui.Find<QAction>("mnuLinesRandom")->isChecked());
    ui.Choose("mnuOnePage");
    ui.Choose("mnu_Draw_Fancy_Single");
    EXPECT_EQ(drawn(), whole);
    auto& panel = *ui.frame->Find(Screen::Treeview)->findChild<DrawingPanel*>();
    panel.ProposeByArea("it cannot be read", "EMPSCHM");
    ui.Click("cmdByArea");
    EXPECT_EQ(drawn(), byArea);
    EXPECT_FALSE(ui.Find<QWidget>("lblProposal")->isVisible());
}

TEST(ScreenDrawing, AFreshLayoutIsDrawnOnlyWhenItIsAskedFor) {
    UiApp ui;
    {
        SchemaRows rows(*ui.app.gConnection, "PAIR");
        rows.Entry("OWNER", "FIRST,SECOND");
        for (const char* member : {"FIRST", "SECOND"}) {
            rows.Record(member);
            rows.Set(member, "OWNER", member);
        }
    }
    ui.Start();
    const std::string file = ui.folder.Path("visio files/PAIR/PAIR.vsd");
    const auto member = [](const drawing::Document& drawing, const char* name) {
        for (const auto& shape : drawing.pages.front()->shapes)
            if (shape->name == name) return shape->cells.Find(drawing::Name::PinX);
        return static_cast<drawing::Cell*>(nullptr);
    };
    const auto firstIsLeft = [&] {
        const auto drawn = drawing::ReadPackageFile(file);
        return member(*drawn, "FIRST")->value < member(*drawn, "SECOND")->value;
    };
    ui.Choose("mnu_Draw_Fancy_Single");
    const bool asLaidOut = firstIsLeft();
    const auto edited = drawing::ReadPackageFile(file);
    std::swap(member(*edited, "FIRST")->value, member(*edited, "SECOND")->value);
    WriteFile(file, drawing::WritePackage(*edited));
    ui.Choose("mnu_Draw_Fancy_Single");
    EXPECT_NE(firstIsLeft(), asLaidOut) << "as a person put them";
    ui.Choose("mnuDrawFresh");
    EXPECT_EQ(firstIsLeft(), asLaidOut);
}

}  // namespace
}  // namespace norvelis::ui
