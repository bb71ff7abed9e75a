#include <gtest/gtest.h>

#include <QScrollBar>

#include "testing/schema_rows.h"
#include "ui/controls/c_tree_view.h"
#include "ui/ui_app.h"

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

}  // namespace
}  // namespace norvelis::ui
