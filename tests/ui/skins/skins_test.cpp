#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QListWidget>
#include <cmath>

#include "ui/controls/click_label.h"
#include "ui/controls/picture_controls.h"
#include "ui/forms/skins_and_colors.h"
#include "ui/skins/art/classic_colors.h"
#include "ui/skins/art/skin_art.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

/// A form with a control of every kind that a skin dresses.
class Wardrobe : public Form {
  public:
    explicit Wardrobe(const ScreenContext& context) : Form(context, "Wardrobe", "WARDROBE", QSize(850, 510)) {
        button = new SkinButton("button", "Press", this);
        check = new SkinCheck("check", "Check", "check", this);
        radio = new SkinRadio("radio", "Radio", "radio", this);
        other = new WindowButton("other", "Maximize", "other", this);
        text = new QLineEdit(this);
        list = new QListWidget(this);
        label = MakeLabel(this, "label", "label");
        buttonLabel = MakeLabel(this, "buttonLabel", "label", "ButtonLabel");
        kept = MakeLabel(this, "kept", "label", "stays NoColorChange here");
    }
    SkinButton* button;
    SkinCheck* check;
    SkinRadio* radio;
    WindowButton* other;
    QLineEdit* text;
    QListWidget* list;
    QLabel *label, *buttonLabel, *kept;
};

class SkinsTest : public ::testing::Test {
  protected:
    UiApp ui;
    Wardrobe* form = nullptr;

    void SetUp() override { ui.Start(); }
    std::string SkinFile(const std::string& name) const { return ui.folder.Path("Skins/Daylight/" + name); }
    void SetIni(const char* section, const char* key, const char* value) {
        WriteINIValue(section, key, value, SkinFile("Daylight.Ini"));
    }
    void Dress() {
        form = new Wardrobe(ui.frame->Context());
        ui.frame->Area().Add(form, false);
        form->Load();
        ui.frame->Area().Activate(form);
        UiApp::Settle();
    }
    static QColor Of(const QWidget* control, QPalette::ColorRole role) {
        return control->palette().color(role);
    }
    static QColor PixelOf(QWidget* widget, QPoint at) { return widget->grab().toImage().pixelColor(at); }
    static bool Near(const QColor& a, const QColor& b, int distance = 10) {
        return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
                   std::abs(a.blue() - b.blue()) <=
               distance;
    }
};

TEST_F(SkinsTest, ColorsComeFromTheSkinByKindAndTag) {
    SetIni("Colors", "LabelForeColor", "255.9 red");
    SetIni("Colors", "TitleColor", "65280");
    SetIni("Colors", "ButtonForeColor", "16711680");
    SetIni("Colors", "TextBoxBackColor", "1");
    SetIni("Colors", "TextBoxForeColor", "2");
    SetIni("Colors", "ListBoxBackColor", "3");
    ui.frame->Context().skin.ColorsWritten();
    UiApp::Settle();
    Dress();
    EXPECT_EQ(Of(form->label, QPalette::WindowText), QColor(255, 0, 0));
    EXPECT_EQ(Of(form->findChild<QLabel*>("lblCaption"), QPalette::WindowText), QColor(0, 255, 0));
    EXPECT_EQ(Of(form->buttonLabel, QPalette::WindowText), QColor(0, 0, 255));
    EXPECT_EQ(Of(form->text, QPalette::Base), QColor(1, 0, 0));
    EXPECT_EQ(Of(form->text, QPalette::Text), QColor(2, 0, 0));
    EXPECT_EQ(Of(form->list, QPalette::Base), QColor(3, 0, 0));
    EXPECT_EQ(Of(form->list, QPalette::Text), QColor(2, 0, 0));
    EXPECT_NE(form->kept->testAttribute(Qt::WA_SetPalette), true);
}

TEST_F(SkinsTest, ClassicColorsKeepTheirOrder) {
    EXPECT_EQ(ClassicColor(1), QColor(0, 0, 128));
    EXPECT_EQ(ClassicColor(4), QColor(128, 0, 0));
    EXPECT_EQ(ClassicColor(7), QColor(192, 192, 192));
    EXPECT_EQ(ClassicColor(9), QColor(0, 0, 255));
    EXPECT_EQ(ClassicColor(15), QColor(255, 255, 255));
    EXPECT_EQ(ClassicColor(16), QColor(0, 0, 0));
    EXPECT_EQ(ColorOf(ColorNumber(QColor(1, 2, 3))), QColor(1, 2, 3));
}

TEST_F(SkinsTest, PicturesFollowTagsAndPresses) {
    Dress();
    const Theme& theme = DeliveredThemes()[0];
    form->button->setGeometry(100, 100, 120, 28);
    form->check->move(100, 150);
    form->radio->move(130, 150);
    UiApp::Settle();
    EXPECT_TRUE(Near(PixelOf(form, {400, 300}), theme.body)) << "the form's background";
    EXPECT_TRUE(Near(PixelOf(form->button, {12, 6}), theme.buttonTop));
    form->button->setDown(true);
    EXPECT_TRUE(Near(PixelOf(form->button, {12, 6}), theme.accent));
    EXPECT_FALSE(Near(PixelOf(form->check, {9, 4}), theme.accent));
    form->check->setChecked(true);
    EXPECT_TRUE(Near(PixelOf(form->check, {9, 4}), theme.accent));
    form->radio->setChecked(true);
    EXPECT_TRUE(Near(PixelOf(form->radio, {9, 9}), theme.accent));
    EXPECT_EQ(form->other->size(), SkinPictureSize(SkinPicture::RestoreUp));
}

TEST_F(SkinsTest, PlacesOfTheCaptionComeInTwipsAndZeroLeavesThem) {
    SetIni("850x510", "CaptionLeft", "600");
    SetIni("850x510", "CaptionTop", "150");
    SetIni("850x510", "CloseLeft", "0");
    SetIni("850x510", "CloseTop", "900");
    ui.frame->resize(1100, 720);
    UiApp::Settle();
    Dress();
    EXPECT_EQ(form->findChild<QWidget*>("lblCaption")->pos(), QPoint(40, 10));
    EXPECT_EQ(form->findChild<QWidget*>("imgClose")->pos(), PlacesFor(QSize(850, 510)).imgClose);
    EXPECT_EQ(form->size(), QSize(850, 510));
    EXPECT_EQ(form->pos(), QPoint(33, 33));
    EXPECT_EQ(form->Tag2(), "850x510");
}

TEST_F(SkinsTest, AMissingBackgroundLeavesTheFormAsItStands) {
    DeleteFile(SkinFile("850x510.Jpg"));
    Dress();
    EXPECT_TRUE(Near(PixelOf(form, {400, 300}), PlainTheme().body));
    EXPECT_EQ(form->findChild<QWidget*>("imgClose")->pos(), PlacesFor(QSize(850, 510)).imgClose);
}

TEST_F(SkinsTest, AChangeReachesEveryOpenForm) {
    Dress();
    EXPECT_TRUE(ui.frame->Context().skin.ChangeTo("Midnight"));
    UiApp::Settle();
    const Theme& theme = DeliveredThemes()[1];
    EXPECT_TRUE(Near(PixelOf(form, {400, 300}), theme.body));
    EXPECT_TRUE(Near(PixelOf(ui.frame->Find(Screen::Treeview), {845, 300}), theme.body));
    EXPECT_EQ(Of(form->label, QPalette::WindowText), theme.label);
    EXPECT_EQ(QApplication::palette().color(QPalette::Base), theme.textBoxBack);
}

TEST_F(SkinsTest, AChangeThatFailsIsSaidAndTheFormerSkinStays) {
    Dress();
    for (const char* missing : {"ButtonDN.Jpg", "Midnight.Ini", "850x510.Jpg", "800x600.Jpg"}) {
        const std::string file = ui.folder.Path(std::string("Skins/Midnight/") + missing);
        std::filesystem::rename(file, file + ".away");
        EXPECT_FALSE(ui.frame->Context().skin.ChangeTo("Midnight")) << missing;
        EXPECT_THAT(ui.host.TakeTexts(),
                    ::testing::ElementsAre("Unable to load this skin. Reverting back to the previous skin."));
        EXPECT_EQ(ui.app.gSkinScheme, "Daylight");
        EXPECT_TRUE(ui.app.gUseSkins);
        UiApp::Settle();
        EXPECT_TRUE(Near(PixelOf(form, {400, 300}), DeliveredThemes()[0].body));
        EXPECT_EQ(ui.frame->Context().skin.Get().colors, LoadColors(ui.app));
        std::filesystem::rename(file + ".away", file);
    }
}

TEST_F(SkinsTest, TheInstalledSkinsAreTheLinesThatHaveAFolder) {
    WriteFile(ui.folder.Path("Skins/Skins.INI"), "Daylight\r\n\r\n  Classic  \r\nNowhere\r\n");
    EXPECT_THAT(InstalledSkins(ui.app), ::testing::ElementsAre("Daylight", "Classic"));
    DeleteFile(ui.folder.Path("Skins/Skins.INI"));
    EXPECT_TRUE(InstalledSkins(ui.app).empty());
}

TEST(SkinsAtStart, ASkinWithAPictureMissingStartsPlain) {
    UiApp ui;
    DeleteFile(ui.folder.Path("Skins/Daylight/CloseUP.Jpg"));
    ui.Start();
    EXPECT_THAT(ui.host.TakeTexts(),
                ::testing::ElementsAre("Unable to load this skin. Reverting back to the previous skin."));
    EXPECT_FALSE(ui.app.gUseSkins);
    EXPECT_TRUE(ui.frame->isVisible());
    EXPECT_EQ(ui.Ini("Skins", "SkinScheme"), "Daylight");
}

TEST(SkinsAtStart, WithoutSkinsEveryFormHasItsOwnLook) {
    UiApp ui;
    WriteINIValue("Skins", "UseSkins", "False", ui.folder.Path("INI/Local.Ini"));
    ui.Start();
    EXPECT_TRUE(ui.host.messages.empty());
    const QImage form = ui.frame->Find(Screen::Treeview)->grab().toImage();
    EXPECT_EQ(form.pixelColor(845, 300), PlainTheme().body);
}

TEST(Pictures, TheSharpestVariantThatADisplayNeedsIsTaken) {
    UiFolder folder;
    const QString file = QString::fromStdString(folder.Path("Skins/Daylight/ButtonUP.Jpg"));
    QImage red(192, 56, QImage::Format_RGB32);
    red.fill(Qt::red);
    red.save(ScaledFile(file, 2), "JPG", 100);
    const Picture picture = Picture::FromFile(file);
    EXPECT_EQ(picture.Size(), QSize(96, 28));
    for (const double ratio : {1.0, 1.5, 2.0}) {
        QImage display((QSizeF(96, 28) * ratio).toSize(), QImage::Format_RGB32);
        display.setDevicePixelRatio(ratio);
        QPainter painter(&display);
        picture.Paint(painter, QRectF(0, 0, 96, 28));
        painter.end();
        EXPECT_EQ(display.pixelColor(display.width() / 2, display.height() / 2).green() < 50, ratio == 2.0);
    }
    EXPECT_TRUE(Picture::FromFile("nowhere.Jpg").IsNull());
}

double Luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
    const auto [dark, light] = std::minmax({Luminance(a), Luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

TEST_F(SkinsTest, TextCanBeReadInEveryDeliveredSkin) {
    constexpr double kReadable = 4.5;
    using P = QPalette;
    constexpr std::pair<P::ColorRole, P::ColorRole> kTexts[] = {{P::WindowText, P::Window},
                                                                {P::Text, P::Base},
                                                                {P::Text, P::AlternateBase},
                                                                {P::ButtonText, P::Button},
                                                                {P::Text, P::Mid},
                                                                {P::HighlightedText, P::Highlight},
                                                                {P::ToolTipText, P::ToolTipBase},
                                                                {P::PlaceholderText, P::Base},
                                                                {P::Link, P::Base},
                                                                {P::Link, P::Window}};
    for (const std::string& name : InstalledSkins(ui.app)) {
        ASSERT_TRUE(ui.frame->Context().skin.ChangeTo(name));
        const Skin& skin = ui.frame->Context().skin.Get();
        const QPalette palette = skin.Palette();
        for (const auto& [text, ground] : kTexts)
            EXPECT_GE(Contrast(palette.color(text), palette.color(ground)), kReadable)
                << name << " " << text << " on " << ground;
        const auto reads = [&](int color, const QColor& ground, const char* what) {
            EXPECT_GE(Contrast(ColorOf(color), ground), kReadable) << name << ": " << what;
        };
        const Picture& up = skin[SkinPicture::ButtonUp];
        for (const int y : {4, up.Size().height() / 2, up.Size().height() - 4})
            reads(skin.colors.ButtonForeColor, up.At(QPoint(40, y)), "a button");
        reads(skin.colors.TextBoxForeColor, ColorOf(skin.colors.ListBoxBackColor), "a list");
        const Picture form = FormPicture(ui.app, kFormTag);
        for (int x = 20; x < 700; x += 40) reads(skin.colors.TitleColor, form.At(QPoint(x, 20)), "a title");
    }
}

TEST_F(SkinsTest, ADisabledListLooksDisabled) {
    Dress();
    const QColor text = PixelOf(form->list, QPoint(30, 30));
    form->list->setEnabled(false);
    EXPECT_NE(PixelOf(form->list, QPoint(30, 30)), text) << "its ground";
    EXPECT_EQ(form->list->palette().color(QPalette::Text),
              QApplication::palette().color(QPalette::Disabled, QPalette::Text));
    EXPECT_LT(Contrast(Of(form->list, QPalette::Text), Of(form->list, QPalette::Base)), 4.5);
}

}  // namespace
}  // namespace norvelis::ui
