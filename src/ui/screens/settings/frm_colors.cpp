#include "ui/screens/settings/frm_colors.h"

#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>

#include "base/failure.h"
#include "base/ini.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/log.h"
#include "core/places.h"
#include "core/settings.h"
#include "ui/controls/click_label.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/picture_controls.h"
#include "ui/forms/window_settings.h"
#include "ui/screens/settings/background_choice.h"
#include "ui/screens/settings/color_samples.h"
#include "ui/screens/settings/set_directory.h"

namespace norvelis::ui {

namespace {

constexpr auto kAutoApply = "AutoApply";
constexpr int kNoBackground = 13;  ///< "Background none", which holds when nothing was chosen.

QLabel* Heading(QWidget* parent, const QString& text) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
    return label;
}

Picture Bitmap(const AppState& app, const char* file) {
    return Picture::FromFile(
        QString::fromStdString(app.AppPath(std::string(places::kBitmaps) + "\\" + file)));
}

}  // namespace

frmColors::frmColors(const ScreenContext& context) : Form(context, "frmColors", "SETTINGS", QSize(850, 510)) {
    auto* columns = new QHBoxLayout;
    columns->setSpacing(34);
    columns->addLayout(LeftColumn());
    columns->addLayout(RightColumn());
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(20, Body().top() + 12, 20, 12);
    rows->addLayout(columns, 1);
    rows->addLayout(SaveRow());
}

QLayout* frmColors::LeftColumn() {
    cboSkinSchemes_ = new QComboBox(this);
    cboSkinSchemes_->setObjectName("cboSkinSchemes");
    cboSkinSchemes_->setAccessibleName("Skin");
    connect(cboSkinSchemes_, &QComboBox::activated, this, &frmColors::ChooseSkin);
    const AppState& app = App();
    samples_ = new ColorSamples(Bitmap(app, "ColorPicker.Jpg"), Bitmap(app, "ColorSquare.Jpg"), this);
    connect(samples_, &ColorSamples::Picked, this, &frmColors::ColorPicked);
    auto* skin = new QHBoxLayout;
    skin->addWidget(samples_->Radio(ColorSamples::SkinSchemes));
    skin->addWidget(cboSkinSchemes_, 1);

    imgAutoApply_ = new SkinCheck("imgAutoApply", "Check", "Auto Apply", this);
    auto* lblAutoApply =
        new ClickLabel("lblAutoApply", "Auto Apply", this, [this] { imgAutoApply_->click(); });
    for (QWidget* part : {static_cast<QWidget*>(imgAutoApply_), static_cast<QWidget*>(lblAutoApply)})
        part->setToolTip("Click here for all color changes to take effect immediately");
    auto* apply = new QHBoxLayout;
    apply->addWidget(imgAutoApply_);
    apply->addWidget(lblAutoApply, 1);

    auto* column = new QVBoxLayout;
    column->setSpacing(7);
    column->addWidget(Heading(this, "Skin"));
    column->addLayout(skin);
    column->addSpacing(6);
    column->addWidget(Heading(this, "Colors of the skin"));
    column->addWidget(samples_);
    column->addLayout(apply);
    column->addStretch();
    return column;
}

QLayout* frmColors::RightColumn() {
    auto* column = new QVBoxLayout;
    column->setSpacing(7);
    const auto path = [&](const char* heading, const char* name, const char* notSet, SkinButton* button) {
        column->addWidget(Heading(this, heading));
        auto* label = new ElidedLabel(name, notSet, this);
        label->setToolTip(heading);
        auto* row = new QHBoxLayout;
        row->addWidget(label, 1);
        row->addWidget(button);
        column->addLayout(row);
        column->addSpacing(4);
        return label;
    };
    auto* Changerpt = new SkinButton("Changerpt", "Change", this);
    Changerpt->setAccessibleName("Change the IDMS report");
    ReportLocation_ = path("Current IDMS report in the system", "ReportLocation",
                           "REPORT FILE HAS NOT BEEN SET", Changerpt);
    connect(Changerpt, &QPushButton::clicked, this, &frmColors::changerptfile);
    auto* ChangeVisio = new SkinButton("ChangeVisio", "Change", this);
    ChangeVisio->setAccessibleName("Change the folder of Visio files");
    VisioLocation_ = path("Visio Files saved here", "VisioLocation", "VISIO FOLDER LOCATION HAS NOT BEEN SET",
                          ChangeVisio);
    connect(ChangeVisio, &QPushButton::clicked, this, &frmColors::changevisiolocation);

    cboStartUpForm_ = new QComboBox(this);
    cboStartUpForm_->setObjectName("cboStartUpForm");
    cboStartUpForm_->setAccessibleName("START-UP FORM");
    cboStartUpForm_->setPlaceholderText("Treeview");  // What an empty setting opens.
    connect(cboStartUpForm_, &QComboBox::activated, this, [this] {
        Guarded("cboStartUpForm",
                [this] { setstartupform(App(), cboStartUpForm_->currentText().toStdString()); });
    });
    auto* start = new QHBoxLayout;
    start->addWidget(Heading(this, "START-UP FORM"));
    start->addWidget(cboStartUpForm_, 1);
    column->addLayout(start);

    imgVisioSet_ = new SkinCheck("imgVisioSet", "Check", "Color the diagram", this);
    auto* lblVisioSet =
        new ClickLabel("lblVisioSet", "Color the diagram", this, [this] { imgVisioSet_->click(); });
    connect(imgVisioSet_, &QAbstractButton::clicked, this, [this](bool on) {
        Guarded("imgVisioSet", [&] { setdiagramcolor(App(), on ? "True" : "False"); });
    });
    auto* color = new QHBoxLayout;
    color->addWidget(imgVisioSet_);
    color->addWidget(lblVisioSet, 1);
    column->addLayout(color);
    column->addSpacing(4);
    QLabel* lblBackground = MakeLabel(this, "lblBackground", {});
    auto* heading = new QHBoxLayout;
    heading->addWidget(Heading(this, "Background of the diagram"), 1);
    heading->addWidget(lblBackground);
    column->addLayout(heading);
    backgrounds_ = new BackgroundChoice(Bitmap(App(), "VisioBackround.Jpg"), this);
    connect(backgrounds_, &BackgroundChoice::ChosenByPerson, this, &frmColors::Changed);
    connect(backgrounds_, &BackgroundChoice::NameChanged, lblBackground, &QLabel::setText);
    column->addWidget(backgrounds_);
    column->addStretch();
    return column;
}

QLayout* frmColors::SaveRow() {
    auto* lblApply = new SkinButton("lblApply", "Apply", this);
    lblApply->setToolTip("Click here to apply your color changes and leave the window open");
    connect(lblApply, &QPushButton::clicked, this, &frmColors::SaveChanges);
    auto* lblSave = new SkinButton("lblSave", "Save", this);
    lblSave->setToolTip("Click here to apply your changes and close this window");
    connect(lblSave, &QPushButton::clicked, this, [this] {
        SaveChanges();
        close();
    });
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(lblApply);
    row->addWidget(lblSave);
    return row;
}

void frmColors::Load() {
    Form::Load();
    if (const auto place = SavedPosition(*this, App().gLocalIni)) MoveTo(*place);
    LoadAllSkinSchemes();
    if (cboSkinSchemes_->currentIndex() < 0 && cboSkinSchemes_->count() > 0)
        cboSkinSchemes_->setCurrentIndex(0);
    cboStartUpForm_->addItems({"Treeview", "Listview", "ConvertSQL", "Scheduler"});
    cboStartUpForm_->setCurrentIndex(-1);
    samples_->Radio(ColorSamples::Label)->setChecked(true);
    backgrounds_->Choose(kNoBackground);
    LoadApplicationSettings();
}

void frmColors::LoadINISettings() {
    Form::LoadINISettings();
    const std::string on = ReadINIValue("frmColors", kAutoApply, App().gLocalIni);
    imgAutoApply_->setChecked(EqualIgnoringCase(on, "True"));
}

void frmColors::SaveINISettings() {
    if (!isWindow()) SavePosition(*this, App().gLocalIni);
    WriteINIValue("frmColors", kAutoApply, imgAutoApply_->isChecked() ? "True" : "False", App().gLocalIni);
}

void frmColors::SkinApplied() {
    samples_->SetTitleBackground(CaptionColor());
    samples_->AllowPicking(App().gUseSkins);
}

void frmColors::LoadAllSkinSchemes() {
    const AppState& app = App();
    for (const std::string& name : InstalledSkins(app))
        cboSkinSchemes_->addItem(QString::fromStdString(name));
    cboSkinSchemes_->setCurrentIndex(-1);
    if (app.gSkinScheme.empty() || !app.gUseSkins) return;
    cboSkinSchemes_->setCurrentIndex(
        cboSkinSchemes_->findText(QString::fromStdString(app.gSkinScheme), Qt::MatchFixedString));
}

void frmColors::LoadApplicationSettings() {
    Guarded("Form_Load", [this] {
        const auto value = [this](std::string_view name) {
            const auto setting = ReadSetting(App(), name);
            return setting ? QString::fromStdString(setting->value) : QString();
        };
        const auto show = [&](QLabel* label, std::string_view name) {
            if (const QString path = value(name); !path.isEmpty()) label->setText(path);
        };
        show(ReportLocation_, "ReportLocation");
        show(VisioLocation_, "visiolocation");  // Whether or not the folder is still there.
        imgVisioSet_->setChecked(value("DiagramColor") == "True");
        bool number = false;
        const int background = value("visiobackground").toInt(&number);
        if (number) backgrounds_->Choose(background);
        cboStartUpForm_->setCurrentIndex(cboStartUpForm_->findText(value("startupform")));
    });
}

void frmColors::ChooseSkin() {
    AppState& app = App();
    samples_->Radio(ColorSamples::SkinSchemes)->setChecked(true);
    if (!Context().skin.ChangeTo(cboSkinSchemes_->currentText().toStdString())) {
        cboSkinSchemes_->setCurrentIndex(
            cboSkinSchemes_->findText(QString::fromStdString(app.gSkinScheme), Qt::MatchFixedString));
        return;
    }
    if (!WriteINIValue("Skins", "UseSkins", app.gUseSkins ? "True" : "False", app.gLocalIni) ||
        !WriteINIValue("Skins", "SkinScheme", app.gSkinScheme, app.gLocalIni))
        app.host.MessageBox("The choice could not be written to:" + std::string(kLineBreak) + app.gLocalIni);
}

void frmColors::ColorPicked(int item, const QColor& color) {
    // The screen previews itself.
    const auto give = [&](QWidget* widget, QPalette::ColorRole role) {
        QPalette palette = widget->palette();
        palette.setColor(role, color);
        widget->setPalette(palette);
    };
    if (item == ColorSamples::TitleColor) give(findChild<QLabel*>("lblCaption"), QPalette::WindowText);
    if (item == ColorSamples::ListboxBackgroundColor) give(cboSkinSchemes_, QPalette::Base);
    Changed();
}

void frmColors::Take(const ScreenRequest& request) {
    if (std::holds_alternative<PickReport>(request)) changerptfile();
    if (std::holds_alternative<PickDrawingFolder>(request)) changevisiolocation();
}

void frmColors::changerptfile() {
    AppState& app = App();
    setDirectory picker(Context(), setDirectory::Picks::File);
    picker.Load();
    const QString present = QString::fromStdString(getreportlocation(app));
    picker.Begin(QFileInfo::exists(present) ? QFileInfo(present).absolutePath()
                                            : QString::fromStdString(app.AppPath(places::kReports)));
    connect(&picker, &setDirectory::FileChosen, this, [&](const QString& path) {
        StoreReport(path);
        picker.close();
    });
    picker.ShowAndWait();
}

void frmColors::StoreReport(const QString& path) {
    Guarded("changerptfile", [&] {
        AppState& app = App();
        const std::string report = NativePath(path.toStdString());
        setreportlocation(app, report);
        ReportLocation_->setText(path);
        app.host.MessageBox("IDMS report file has been set to:" + std::string(kLineBreak) + report);
    });
}

void frmColors::changevisiolocation() {
    AppState& app = App();
    setDirectory picker(Context(), setDirectory::Picks::Folder);
    picker.Load();
    const std::string present = getvisiolocation(app);
    picker.Begin(QString::fromStdString(present.empty() ? app.ApplicationFolder : present));
    connect(&picker, &setDirectory::FolderChosen, this, &frmColors::StoreFolder);
    picker.ShowAndWait();
}

void frmColors::StoreFolder(const QString& folder) {
    Guarded("changevisiolocation", [&] {
        AppState& app = App();
        setvisiolocation(app, folder.toStdString());
        VisioLocation_->setText(folder);
        app.host.MessageBox("Visio Floder has been set to:" + std::string(kLineBreak) + folder.toStdString());
    });
}

void frmColors::Changed() {
    changed_ = true;
    if (imgAutoApply_->isChecked()) SaveChanges();
}

void frmColors::SaveChanges() {
    AppState& app = App();
    SaveINISettings();
    if (app.gUseSkins && !SaveColors(app, samples_->Colors()))
        app.host.MessageBox("The colors could not be written to:" + std::string(kLineBreak) + SkinIni(app));
    Guarded("SaveChanges", [&] {
        setvisiobackground(app, backgrounds_->Chosen());
        if (cboStartUpForm_->currentIndex() >= 0)
            setstartupform(app, cboStartUpForm_->currentText().toStdString());
        changed_ = false;
    });
    Context().skin.ColorsWritten();
}

bool frmColors::QueryUnload() {
    if (!changed_) return true;
    const Answer answer = App().host.MessageBox(
        {"Save changes before exiting?", "Save Changes...", Buttons::YesNoCancel, Icon::None, Answer::Ok});
    if (answer == Answer::Yes) SaveChanges();
    return answer != Answer::Cancel;
}

void frmColors::Guarded(const char* procedure, const std::function<void()>& step) {
    try {
        step();
    } catch (const RuntimeFailure& failure) {
        WriteToErrorLog(App(), "frmColors", procedure, failure.what(), static_cast<int>(failure.Number()));
    }
}

}  // namespace norvelis::ui
