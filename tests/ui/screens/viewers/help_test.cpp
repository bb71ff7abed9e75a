#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTextBrowser>

#include "ui/controls/picture_controls.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;

class HelpTest : public ::testing::Test {
  protected:
    UiApp ui;

    void SetUp() override {
        ui.Start();
        ui.frame->activateWindow();
    }
    void PressF1() {
        QTest::keyClick(ui.frame.get(), Qt::Key_F1);
        UiApp::Settle();
    }
    template <typename T>
    T& On(const char* name) const {
        return *ui.frame->Find(Screen::Help)->findChild<T*>(name);
    }
    std::string Page() const { return On<QTextBrowser>("webTarget").source().fileName().toStdString(); }
    void Find(const char* text) const {
        On<QLineEdit>("txtFind").setText(text);
        QTest::keyClick(&On<QLineEdit>("txtFind"), Qt::Key_Return);
    }
};

TEST_F(HelpTest, F1OpensThePageOfTheScreenAtHand) {
    for (const auto& [screen, page] :
         {std::pair(Screen::Treeview, "tree.html"), std::pair(Screen::Settings, "settings.html"),
          std::pair(Screen::About, "index.html"), std::pair(Screen::Findings, "findings.html"),
          std::pair(Screen::Find, "find.html")}) {
        ui.host.OpenScreen(screen, false);
        UiApp::Settle();
        PressF1();
        ASSERT_TRUE(ui.frame->Find(Screen::Help) && ui.frame->Find(Screen::Help)->isVisible()) << page;
        EXPECT_EQ(Page(), page);
        EXPECT_FALSE(On<QTextBrowser>("webTarget").toPlainText().isEmpty()) << page;
    }
    PressF1();
    EXPECT_EQ(Page(), "index.html") << "of help itself";
    ui.frame->Find(Screen::Help)->close();
    DeleteFile(ui.folder.Path("help/index.html"));
    PressF1();
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("The help pages are missing:\r\n" + ui.folder.Path("help/index.html")));
}

TEST_F(HelpTest, ContentsBackAndForwardAndFind) {
    PressF1();
    auto& contents = On<QListWidget>("lstContents");
    int pages = 0;
    for (const std::string& name : FilesIn(ui.folder.Path("help"))) pages += name.ends_with(".html") ? 1 : 0;
    EXPECT_EQ(contents.count(), pages) << "every page is in the contents";
    ASSERT_EQ(contents.selectedItems().size(), 1);
    EXPECT_EQ(contents.selectedItems().front()->text(), "The record tree");
    contents.setCurrentItem(contents.findItems("Printing", Qt::MatchExactly).at(0));
    EXPECT_EQ(Page(), "print.html");
    EXPECT_EQ(contents.currentItem()->text(), "Printing");
    On<SkinButton>("cmdBack").click();
    EXPECT_EQ(Page(), "tree.html");
    EXPECT_EQ(contents.currentItem()->text(), "The record tree");
    On<SkinButton>("cmdForward").click();
    EXPECT_EQ(Page(), "print.html");

    Find("crop marks");
    auto& browser = On<QTextBrowser>("webTarget");
    EXPECT_EQ(browser.textCursor().selectedText(), "Crop marks");
    const int place = browser.textCursor().position();
    Find("crop marks");
    EXPECT_EQ(browser.textCursor().position(), place) << "again from the top";
    Find("no such words");
    EXPECT_EQ(On<QLabel>("lblFound").text(), "\"no such words\" is not on this page");
}

}  // namespace
}  // namespace norvelis::ui
