#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

#include "ui/screens/settings/set_directory.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;

class PickerTest : public ::testing::Test {
  protected:
    UiApp ui;

    void SetUp() override {
        std::filesystem::create_directories(ui.folder.Path("Reports/Old"));
        WriteFile(ui.folder.Path("Reports/a.text"), "a\n");
        WriteFile(ui.folder.Path("Reports/Old/b.text"), "b\n");
        ui.Start();
        ui.Choose("mnuColors");
    }
    static QListWidgetItem* Item(QListWidget& list, const QString& text) {
        for (int i = 0; i < list.count(); ++i) {
            if (list.item(i)->text().trimmed() == text) return list.item(i);
        }
        ADD_FAILURE() << "no " << text.toStdString();
        return list.item(0);
    }
    static void Activate(QListWidget& list, const QString& text) {
        list.setCurrentItem(Item(list, text));
        QTest::keyClick(&list, Qt::Key_Return);
    }
    static QListWidget& List(QWidget& picker, const char* name) {
        return *picker.findChild<QListWidget*>(name);
    }
};

TEST_F(PickerTest, AClickOnAFileStoresTheReportAndClosesThePicker) {
    setreportlocation(ui.app, ui.folder.Path("Reports/Old/b.text"));
    WhenWaiting([&](QWidget& picker) {
        EXPECT_EQ(picker.objectName(), "setDirectory");
        EXPECT_EQ(picker.size(), QSize(500, 300));
        EXPECT_EQ(dynamic_cast<Form&>(picker).Tag2(), "500x300");
        QListWidget &folders = List(picker, "Dir1"), &files = List(picker, "File1");
        EXPECT_TRUE(files.isVisible());
        EXPECT_EQ(files.item(0)->text(), "b.text") << "it begins where the report is";
        Activate(folders, "Reports");
        EXPECT_TRUE(ui.host.messages.empty()) << "with the file list a folder is no choice";
        QTest::mouseClick(files.viewport(), Qt::LeftButton, Qt::NoModifier,
                          files.visualItemRect(Item(files, "a.text")).center());
    });
    ui.Click("Changerpt");
    const std::string report = ui.folder.Path("Reports/a.text");
    EXPECT_EQ(getreportlocation(ui.app), report);
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("IDMS report file has been set to:\r\n" + report));
    EXPECT_EQ(ui.Find<QLabel>("ReportLocation")->text().toStdString(), report);
    EXPECT_NE(ui.Ini("setDirectory", "Left"), "");
    EXPECT_EQ(ui.Ini("setDirectory", "Width"), "");
}

TEST_F(PickerTest, TheKeyboardAlonePicksAReport) {
    WhenWaiting([&](QWidget& picker) {
        // The platform gives the keyboard to a new window when it comes to it.
        EXPECT_TRUE(QTest::qWaitFor([&] { return picker.isAncestorOf(QApplication::focusWidget()); }));
        std::vector<QString> reached;
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Return}) {
            reached.push_back(QApplication::focusWidget()->objectName());
            QTest::keyClick(QApplication::focusWidget(), key);
        }
        EXPECT_THAT(reached, ElementsAre("Drive1", "Dir1", "File1", "File1"));
        EXPECT_FALSE(picker.isVisible());
        picker.close();
    });
    ui.Click("Changerpt");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("IDMS report file has been set to:\r\n" + getreportlocation(ui.app)));
}

TEST_F(PickerTest, EveryChangeOfFolderIsStoredUntilTheWindowIsClosed) {
    WhenWaiting([&](QWidget& picker) {
        QListWidget& folders = List(picker, "Dir1");
        EXPECT_FALSE(List(picker, "File1").isVisible());
        Activate(folders,
                 QString::fromStdString(std::filesystem::path(ui.folder.Path()).filename().string()));
        Activate(folders, "Reports");
        EXPECT_EQ(getvisiolocation(ui.app), ui.folder.Path("Reports/"));
        Activate(folders, "Old");
        QTest::keyClick(&picker, Qt::Key_Escape);
    });
    ui.Click("ChangeVisio");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("Visio Floder has been set to:\r\n" + ui.folder.Path() + "/",
                            "Visio Floder has been set to:\r\n" + ui.folder.Path("Reports/"),
                            "Visio Floder has been set to:\r\n" + ui.folder.Path("Reports/Old/")));
    EXPECT_EQ(getvisiolocation(ui.app), ui.folder.Path("Reports/Old/"));
    EXPECT_EQ(ui.Find<QLabel>("VisioLocation")->text().toStdString(), ui.folder.Path("Reports/Old/"));
}

TEST_F(PickerTest, ATypedPathIsAChoice) {
    WhenWaiting([&](QWidget& picker) {
        auto* path = picker.findChild<QLineEdit*>("txtPath");
        auto* hint = picker.findChild<QLabel*>("lblHint");
        const auto type = [path](const std::string& text) {
            path->setText(QString::fromStdString(text));
            QTest::keyClick(path, Qt::Key_Return);
        };
        EXPECT_TRUE(hint->text().startsWith("Double click a folder, or type its path"));
        type(ui.folder.Path("nowhere"));
        EXPECT_EQ(hint->text(), "There is no such folder.");
        EXPECT_TRUE(ui.host.messages.empty());
        type(ui.folder.Path("REPORTS\\old"));
        EXPECT_EQ(path->text().toStdString(), ui.folder.Path("Reports/Old"));
        type("..");
        picker.close();
    });
    ui.Click("ChangeVisio");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("Visio Floder has been set to:\r\n" + ui.folder.Path("Reports/Old/"),
                            "Visio Floder has been set to:\r\n" + ui.folder.Path("Reports/")));
    WhenWaiting([&](QWidget& picker) {
        auto* path = picker.findChild<QLineEdit*>("txtPath");
        path->setText(QString::fromStdString(ui.folder.Path("Reports/Old/b.text")));
        QTest::keyClick(path, Qt::Key_Return);
    });
    ui.Click("Changerpt");
    EXPECT_EQ(getreportlocation(ui.app), ui.folder.Path("Reports/Old/b.text"));
}

TEST_F(PickerTest, ADriveSetsTheFolders) {
    setDirectory picker(ui.frame->Context(), setDirectory::Picks::Folder);
    picker.Load();
    picker.Begin(QString::fromStdString(ui.folder.Path("Reports")));
    QString chosen;
    QObject::connect(&picker, &setDirectory::FolderChosen, [&](const QString& folder) { chosen = folder; });
    auto* drives = picker.findChild<QComboBox*>("Drive1");
    drives->setCurrentIndex(drives->findText("/"));
    emit drives->activated(drives->currentIndex());
    EXPECT_EQ(chosen, "/");
    EXPECT_EQ(List(picker, "Dir1").item(0)->text(), "/");
}

TEST_F(PickerTest, ClosingWithoutAChoiceChangesNothing) {
    const std::string before = getreportlocation(ui.app);
    WhenWaiting([](QWidget& picker) { picker.close(); });
    ui.Click("Changerpt");
    EXPECT_EQ(getreportlocation(ui.app), before);
    EXPECT_TRUE(ui.host.messages.empty());
}

}  // namespace
}  // namespace norvelis::ui
