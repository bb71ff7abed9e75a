#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QColorDialog>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>

#include "ui/controls/picture_controls.h"
#include "ui/screens/settings/color_palette.h"
#include "ui/screens/settings/frm_colors.h"
#include "ui/skins/art/classic_colors.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SettingsScreenTest : public ::testing::Test {
  protected:
    UiApp ui;
    frmColors* screen = nullptr;

    void SetUp() override { ui.Start(); }
    void Open() {
        ui.Choose("mnuColors");
        screen = dynamic_cast<frmColors*>(ui.frame->Find(Screen::Settings));
        ASSERT_NE(screen, nullptr);
    }
    template <typename T>
    T* Control(const QString& name) {
        T* found = screen->findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    void Click(const QString& name) {
        auto* control = Control<QWidget>(name);
        QTest::mouseClick(control, Qt::LeftButton, Qt::NoModifier, control->rect().center());
        UiApp::Settle();
    }
    void PickItem(int item) { Click(QString("imgSelected%1").arg(item)); }
    /// A press at a point of the palette; the colour that is there.
    QColor PressPalette(QPoint at) {
        auto* palette = Control<ColorPalette>("picColorPalette");
        QColor color;
        const auto listening =
            QObject::connect(palette, &ColorPalette::Picked, [&](const QColor& picked) { color = picked; });
        QTest::mousePress(palette, Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseRelease(palette, Qt::LeftButton, Qt::NoModifier, at);
        QObject::disconnect(listening);
        UiApp::Settle();
        return color;
    }
    QColor ColorShown(const char* control, QPalette::ColorRole role) {
        return Control<QWidget>(control)->palette().color(role);
    }
    void Choose(const char* combo, const QString& entry) {
        auto* box = Control<QComboBox>(combo);
        const int index = box->findText(entry);
        ASSERT_GE(index, 0) << entry.toStdString();
        box->setCurrentIndex(index);
        emit box->activated(index);
        UiApp::Settle();
    }
    int SkinColor(const char* key) const {
        return std::stoi(ReadINIValue("Colors", key, ui.folder.Path("Skins/Daylight/Daylight.Ini")));
    }
    void CloseScreen() {
        Click("imgClose");
        UiApp::Settle();
    }
};

TEST_F(SettingsScreenTest, CaptionsAndToolTipsStandToTheLetter) {
    setreportlocation(ui.app, "");
    ui.app.gConnection->Execute("Delete * FROM ApplicationSetting");
    Open();
    EXPECT_EQ(Control<QLabel>("lblCaption")->text(), "SETTINGS");
    EXPECT_EQ(screen->Tag2(), "850x510");
    struct Words {
        const char *control, *text, *tip;
    };
    const Words words[] = {
        {"lblLabelColor", "Label Color", "Click here to set the color of all labels"},
        {"lblButtonLabelColor", "Button Text Color", "Click here to set the color of all text on buttons"},
        {"lblTitleColor", "Title Color", "Click here to set the color of the window name or title"},
        {"txtTextBoxBackGroundColor", "Textbox Background Color", ""},
        {"lblHideSolidColors", "Hide Solid Colors", ""},
        {"lblWindowsColors", "More Colors", "Click here to go to the Windows Colors screen"},
        {"lblAutoApply", "Auto Apply", "Click here for all color changes to take effect immediately"},
        {"lblApply", "Apply", "Click here to apply your color changes and leave the window open"},
        {"lblSave", "Save", "Click here to apply your changes and close this window"},
        {"ReportLocation", "REPORT FILE HAS NOT BEEN SET", "Current IDMS report in the system"},
        {"VisioLocation", "VISIO FOLDER LOCATION HAS NOT BEEN SET", "Visio Files saved here"}};
    for (const Words& one : words) {
        auto* control = Control<QWidget>(one.control);
        EXPECT_EQ(control->property("text").toString(), one.text);
        EXPECT_EQ(control->toolTip(), one.tip) << one.control;
    }
    EXPECT_EQ(Control<QListWidget>("lstListBoxBackGroundColor")->item(0)->text(), "Listbox Background Color");
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(Control<QWidget>(QString("imgSelected%1").arg(i))->toolTip(),
                  "Click on these radio buttons to select what's to the right of them");
    for (int i = 0; i < 18; ++i) {
        auto* radio = Control<QWidget>(QString("imgBackSelected%1").arg(i));
        EXPECT_EQ(radio->toolTip(), "Click on these radio buttons to select visio background");
        EXPECT_EQ(radio->accessibleName().toStdString(), kBackgroundNames[static_cast<std::size_t>(i)]);
    }
    auto* forms = Control<QComboBox>("cboStartUpForm");
    QStringList entries;
    for (int i = 0; i < forms->count(); ++i) entries << forms->itemText(i);
    EXPECT_EQ(entries, QStringList({"Treeview", "Listview", "ConvertSQL", "Scheduler"}));
}

TEST_F(SettingsScreenTest, ItOpensWithWhatIsStored) {
    setdiagramcolor(ui.app, "True");
    setvisiobackground(ui.app, 5);
    setstartupform(ui.app, "Scheduler");
    Open();
    EXPECT_EQ(Control<QComboBox>("cboSkinSchemes")->currentText(), "Daylight");
    EXPECT_EQ(Control<QComboBox>("cboSkinSchemes")->count(), 3);
    EXPECT_TRUE(Control<QAbstractButton>("imgSelected0")->isChecked());
    EXPECT_EQ(Control<QLabel>("ReportLocation")->text().toStdString(), getreportlocation(ui.app));
    EXPECT_EQ(Control<QLabel>("VisioLocation")->text().toStdString(), getvisiolocation(ui.app));
    EXPECT_TRUE(Control<QAbstractButton>("imgVisioSet")->isChecked());
    EXPECT_TRUE(Control<QAbstractButton>("imgBackSelected5")->isChecked());
    EXPECT_EQ(Control<QComboBox>("cboStartUpForm")->currentText(), "Scheduler");
    CloseScreen();
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty()) << "nothing was changed";
}

TEST_F(SettingsScreenTest, APickedColorGoesToTheCurrentItemAndApplyWritesTheSkin) {
    Open();
    struct Item {
        int index;
        const char* sample;
        QPalette::ColorRole role;
        const char* key;
    };
    const Item items[] = {{0, "lblLabelColor", QPalette::WindowText, "LabelForeColor"},
                          {1, "lblButtonLabelColor", QPalette::WindowText, "ButtonForeColor"},
                          {2, "txtTextBoxBackGroundColor", QPalette::Base, "TextBoxBackColor"},
                          {3, "txtTextBoxForeGroundColor", QPalette::Text, "TextBoxForeColor"},
                          {4, "lstListBoxBackGroundColor", QPalette::Base, "ListBoxBackColor"},
                          {6, "lblTitleColor", QPalette::WindowText, "TitleColor"}};
    std::map<int, QColor> picked;
    for (const Item& item : items) {
        PickItem(item.index);
        const int before = SkinColor(item.key);
        picked[item.index] = PressPalette(QPoint(15 + 25 * item.index, 60));
        ASSERT_TRUE(picked[item.index].isValid());
        EXPECT_EQ(ColorShown(item.sample, item.role), picked[item.index]) << item.sample;
        EXPECT_EQ(SkinColor(item.key), before) << "without auto apply the samples change alone";
    }
    EXPECT_EQ(ColorShown("lblCaption", QPalette::WindowText), picked[6]) << "the screen previews itself";
    EXPECT_EQ(ColorShown("cboSkinSchemes", QPalette::Base), picked[4]);
    const int pressed = SkinColor("ButtonDownForeColor");
    Click("lblApply");
    for (const Item& item : items) EXPECT_EQ(ColorOf(SkinColor(item.key)), picked[item.index]) << item.key;
    EXPECT_EQ(SkinColor("ButtonDownForeColor"), pressed);
    EXPECT_TRUE(screen->isVisible());
    EXPECT_EQ(ui.frame->Find(Screen::Treeview)
                  ->findChild<QLabel*>("lblStatus")
                  ->palette()
                  .color(QPalette::WindowText),
              picked[0])
        << "the open screens follow";
    CloseScreen();
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty());
}

TEST_F(SettingsScreenTest, ThePaletteFollowsTheHeldMouseAndTheKeys) {
    Open();
    PickItem(0);
    auto* palette = Control<ColorPalette>("picColorsSquare");
    QTest::mousePress(palette, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    const QColor first = ColorShown("lblLabelColor", QPalette::WindowText);
    QTest::mouseMove(palette, QPoint(150, 100));
    const QColor second = ColorShown("lblLabelColor", QPalette::WindowText);
    EXPECT_NE(first, second);
    QTest::mouseRelease(palette, Qt::LeftButton, Qt::NoModifier, QPoint(150, 100));
    QTest::mouseMove(palette, QPoint(20, 20));
    EXPECT_EQ(ColorShown("lblLabelColor", QPalette::WindowText), second) << "not held";
    EXPECT_EQ(ColorShown("lblUnderMouse", QPalette::Window), first);
    for (int i = 0; i < 5; ++i) QTest::keyClick(palette, Qt::Key_Right);
    QTest::keyClick(palette, Qt::Key_Space);
    EXPECT_NE(ColorShown("lblLabelColor", QPalette::WindowText), second);
}

TEST_F(SettingsScreenTest, LabelsChooseTheirItem) {
    Open();
    for (const auto& [label, radio] :
         {std::pair("lblButtonLabelColor", "imgSelected1"), std::pair("lblTitleColor", "imgSelected6"),
          std::pair("lblLabelColor", "imgSelected0")}) {
        Click(label);
        EXPECT_TRUE(Control<QAbstractButton>(radio)->isChecked()) << label;
    }
}

TEST_F(SettingsScreenTest, MoreColorsAsksThePlatform) {
    Open();
    PickItem(3);
    WhenWaiting([](QWidget& waiting) {
        auto& dialog = dynamic_cast<QColorDialog&>(waiting);
        dialog.setCurrentColor(QColor(12, 34, 56));
        dialog.accept();
    });
    Click("lblWindowsColors");
    EXPECT_EQ(ColorShown("txtTextBoxForeGroundColor", QPalette::Text), QColor(12, 34, 56));
}

TEST_F(SettingsScreenTest, SolidColorsCanBeHidden) {
    Open();
    EXPECT_TRUE(Control<QWidget>("picColorsSquare")->isVisible());
    Click("imgShowHideSolidColors");
    EXPECT_FALSE(Control<QWidget>("picColorsSquare")->isVisible());
    EXPECT_EQ(Control<QLabel>("lblHideSolidColors")->text(), "Show Solid Colors");
    Click("lblHideSolidColors");
    EXPECT_TRUE(Control<QWidget>("picColorsSquare")->isVisible());
}

TEST_F(SettingsScreenTest, AutoApplySavesEachChangeAndIsRemembered) {
    Open();
    Click("lblAutoApply");
    PickItem(0);
    const QColor color = PressPalette(QPoint(60, 70));
    EXPECT_EQ(ColorOf(SkinColor("LabelForeColor")), color);
    CloseScreen();
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty());
    EXPECT_EQ(ui.Ini("frmColors", "AutoApply"), "True");
    Open();
    EXPECT_TRUE(Control<QAbstractButton>("imgAutoApply")->isChecked());
}

TEST_F(SettingsScreenTest, ClosingAsksAboutUnsavedChanges) {
    Open();
    const int before = SkinColor("LabelForeColor");
    PressPalette(QPoint(60, 70));
    ui.host.answers = {Answer::Cancel, Answer::No};
    CloseScreen();
    ASSERT_EQ(ui.host.messages.size(), 1U);
    EXPECT_EQ(ui.host.messages[0].text, "Save changes before exiting?");
    EXPECT_EQ(ui.host.messages[0].title, "Save Changes...");
    EXPECT_EQ(ui.host.messages[0].buttons, Buttons::YesNoCancel);
    EXPECT_TRUE(screen->isVisible());
    ui.frame->close();
    EXPECT_EQ(SkinColor("LabelForeColor"), before);
    EXPECT_FALSE(ui.frame->isVisible()) << "No closes form and frame";

    ui.SetGoodSettings();
    ui.Start();
    Open();
    const QColor color = PressPalette(QPoint(60, 70));
    ui.host.answers = {Answer::Yes};
    CloseScreen();
    EXPECT_EQ(ColorOf(SkinColor("LabelForeColor")), color);
    EXPECT_EQ(ui.frame->Find(Screen::Settings), nullptr);
}

TEST_F(SettingsScreenTest, CancelKeepsTheFrameToo) {
    Open();
    PressPalette(QPoint(60, 70));
    ui.host.answers = {Answer::Cancel};
    EXPECT_FALSE(ui.frame->close());
    EXPECT_TRUE(ui.frame->isVisible());
    EXPECT_TRUE(ui.frame->Find(Screen::Treeview)->isVisible()) << "all screens stay";
    EXPECT_TRUE(ui.app.gConnection);
    ui.host.answers = {Answer::No};
    ui.frame->close();
}

TEST_F(SettingsScreenTest, BackgroundIsSavedWithItsIndexAndName) {
    Open();
    Click("imgBackSelected11");
    EXPECT_EQ(ReadSetting(ui.app, "visiobackground"), std::nullopt) << "not before it is applied";
    Click("lblSave");
    UiApp::Settle();
    EXPECT_EQ(ReadSetting(ui.app, "visiobackground")->value, "11");
    EXPECT_EQ(getvisiobackground(ui.app), "Background city");
    EXPECT_EQ(ui.frame->Find(Screen::Settings), nullptr) << "Save closes";
    ui.app.gConnection->Execute("Update ApplicationSetting set settingvalue = '77'");
    Open();
    EXPECT_TRUE(Control<QAbstractButton>("imgBackSelected13")->isChecked())
        << "an unknown index chooses nothing";
    auto* picture = Control<QWidget>("picBackground");
    QTest::mouseClick(picture, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_TRUE(Control<QAbstractButton>("imgBackSelected0")->isChecked());
}

TEST_F(SettingsScreenTest, StartUpFormAndDiagramColorAreStoredAtOnce) {
    Open();
    Choose("cboStartUpForm", "ConvertSQL");
    EXPECT_EQ(getstartupform(ui.app), "ConvertSQL");
    Click("imgVisioSet");
    EXPECT_EQ(getdiagramcolor(ui.app), "True");
    Click("lblVisioSet");
    EXPECT_EQ(getdiagramcolor(ui.app), "False");
    CloseScreen();
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty());
}

TEST_F(SettingsScreenTest, ChoosingASkinPutsItInForceAndIntoTheIni) {
    Open();
    Choose("cboSkinSchemes", "Classic");
    EXPECT_EQ(ui.app.gSkinScheme, "Classic");
    EXPECT_EQ(ui.Ini("Skins", "SkinScheme"), "Classic");
    EXPECT_EQ(ui.Ini("Skins", "UseSkins"), "True");
    EXPECT_TRUE(Control<QAbstractButton>("imgSelected5")->isChecked());
    EXPECT_EQ(ColorShown("lblCaption", QPalette::WindowText), QColor(Qt::white));

    DeleteFile(ui.folder.Path("Skins/Midnight/ButtonUP.Jpg"));
    Choose("cboSkinSchemes", "Midnight");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("Unable to load this skin. Reverting back to the previous skin."));
    EXPECT_EQ(Control<QComboBox>("cboSkinSchemes")->currentText(), "Classic");
    EXPECT_EQ(ui.Ini("Skins", "SkinScheme"), "Classic");
}

TEST_F(SettingsScreenTest, AnIniThatCannotBeWrittenIsSaid) {
    Open();
    ui.app.gLocalIni = ui.folder.Path("nowhere/Local.Ini");
    Choose("cboSkinSchemes", "Classic");
    EXPECT_EQ(ui.app.gSkinScheme, "Classic");
    EXPECT_THAT(ui.host.TakeTexts(),
                ElementsAre("The choice could not be written to:\r\n" + ui.app.gLocalIni));
    CloseScreen();
    EXPECT_THAT(ui.host.TakeTexts(), IsEmpty()) << "a place that is not kept is no matter";
}

TEST_F(SettingsScreenTest, WithoutASkinOneCanBeChosenAndColorsCannot) {
    ui.frame->close();
    WriteINIValue("Skins", "UseSkins", "False", ui.folder.Path("INI/Local.Ini"));
    ui.SetGoodSettings();
    ui.Start();
    Open();
    EXPECT_FALSE(Control<QWidget>("picColorPalette")->isEnabled());
    EXPECT_EQ(Control<QComboBox>("cboSkinSchemes")->currentIndex(), 0);
    Choose("cboSkinSchemes", "Daylight");
    EXPECT_TRUE(ui.app.gUseSkins);
    EXPECT_EQ(ui.Ini("Skins", "UseSkins"), "True");
    EXPECT_TRUE(Control<QWidget>("picColorPalette")->isEnabled());
}

TEST_F(SettingsScreenTest, MissingPicturesAndListsLeaveTheScreenUsable) {
    for (const char* file : {"Bitmaps/ColorPicker.Jpg", "Bitmaps/ColorSquare.Jpg",
                             "Bitmaps/VisioBackround.Jpg", "Skins/Skins.INI"})
        DeleteFile(ui.folder.Path(file));
    Open();
    EXPECT_FALSE(PressPalette(QPoint(60, 70)).isValid());
    EXPECT_EQ(Control<QComboBox>("cboSkinSchemes")->count(), 0);
    Click("imgBackSelected3");
    Click("lblApply");
    EXPECT_EQ(getvisiobackground(ui.app), "Background web");
}

TEST_F(SettingsScreenTest, ASkinWithoutItsIniGetsNoneAndThePersonIsTold) {
    Open();
    DeleteFile(ui.folder.Path("Skins/Daylight/Daylight.Ini"));
    Click("lblApply");
    EXPECT_FALSE(FileExists(ui.folder.Path("Skins/Daylight/Daylight.Ini")));
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("The colors could not be written to:\r\n" +
                                                 ui.folder.Path("Skins/Daylight/Daylight.Ini")));
    EXPECT_NE(ColorShown("txtTextBoxForeGroundColor", QPalette::Text),
              ColorShown("txtTextBoxForeGroundColor", QPalette::Base))
        << "texts can still be read";
}

TEST_F(SettingsScreenTest, AStoreThatRefusesIsToldAndTheScreenStays) {
    Open();
    ui.app.gConnection->Execute(
        "CREATE TRIGGER full BEFORE INSERT ON ApplicationSetting BEGIN SELECT RAISE(ABORT, 'disk is full'); "
        "END");
    Choose("cboStartUpForm", "Listview");
    ASSERT_EQ(ui.host.messages.size(), 1U);
    EXPECT_EQ(ui.host.messages[0].title, "Error...");
    EXPECT_THAT(ui.host.messages[0].text, ::testing::HasSubstr("disk is full"));
    EXPECT_TRUE(screen->isVisible());
    EXPECT_THAT(ui.failures, IsEmpty());
}

TEST_F(SettingsScreenTest, PlaceIsSavedAndComesBack) {
    Open();
    screen->MoveTo(QPoint(90, 70));
    CloseScreen();
    EXPECT_EQ(ui.Ini("frmColors", "Left"), "1350");
    EXPECT_EQ(ui.Ini("frmColors", "Top"), "1050");
    Open();
    EXPECT_EQ(screen->pos(), QPoint(90, 70));
}

}  // namespace
}  // namespace norvelis::ui
