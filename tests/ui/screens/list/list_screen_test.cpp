#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QLabel>

#include "testing/schema_rows.h"
#include "ui/screens/viewers/report_view.h"
#include "ui/ui_app.h"

namespace norvelis::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// The list screen, at first on the sample report.
class ListScreenTest : public ::testing::Test {
  protected:
    UiApp ui;
    Form* screen = nullptr;

    const int interval = QApplication::keyboardInputInterval();

    void SetUp() override {
        QApplication::setKeyboardInputInterval(60'000);  // What is typed here is one word, however slowly.
        ui.Start();
        ui.Choose("mnu_Classic_Extract_Report");
        Open();
    }
    void TearDown() override { QApplication::setKeyboardInputInterval(interval); }
    void Open() {
        ui.Choose("mnuListview");
        screen = ui.frame->Find(Screen::Listview);
        ui.host.messages.clear();
    }
    template <typename T = QWidget>
    T& Part(const char* name) const {
        return *screen->findChild<T*>(name);
    }
    QAbstractItemView& List(const char* name) const { return Part<QAbstractItemView>(name); }
    std::vector<std::string> Names(const char* list) const {
        std::vector<std::string> names;
        const QAbstractItemModel& model = *List(list).model();
        for (int row = 0; row < model.rowCount(); ++row)
            names.push_back(model.index(row, 0).data().toString().toStdString());
        return names;
    }
    std::string Marked(const char* list) const {
        return List(list).currentIndex().data().toString().toStdString();
    }
    QPoint PlaceOf(const char* list, const char* name) const {
        const QAbstractItemModel& model = *List(list).model();
        const auto found = model.match(model.index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly);
        List(list).scrollTo(found.value(0));
        return List(list).visualRect(found.value(0)).topLeft() + QPoint(20, 5);
    }
    void Click(const char* list, const char* name) const {
        QTest::mouseClick(List(list).viewport(), Qt::LeftButton, {}, PlaceOf(list, name));
    }
    void ClickBelow(const char* list) const {
        const QPoint corner = List(list).viewport()->rect().bottomLeft();
        QTest::mouseClick(List(list).viewport(), Qt::LeftButton, {}, corner + QPoint(20, -2));
    }
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    std::string Record() const { return Part<QLabel>("lblRecordname").text().toStdString(); }
};

TEST_F(ListScreenTest, OpensOnTheFirstRecordOfTheFirstSchema) {
    EXPECT_EQ(screen->windowTitle(), "RECORDS LISTVIEW");
    EXPECT_EQ(screen->size(), QSize(850, 510));
    EXPECT_EQ(List("FlxGrid0").toolTip(), "Select Schema Dictionary to list records below");
    EXPECT_THAT(Names("FlxGrid0"), ElementsAre("EMPSCHM"));
    EXPECT_EQ(Names("FlxGrid3").size(), 14u);
    EXPECT_EQ(Record(), "BUILD-STEP");
    EXPECT_EQ(QApplication::focusWidget(), &List("FlxGrid3"));
    std::size_t from = 0;
    for (const char* line :
         {"Entered form Formlistview.....", "loading skins.....", "Initialize load....", "Done....."}) {
        from = ui.Log().find(std::string("Formlistview ---- Form_Load ---- ") + line, from);
        EXPECT_NE(from, std::string::npos) << line;
    }
}

TEST_F(ListScreenTest, ClicksWalkFromRecordToRecord) {
    Click("FlxGrid3", "REPAIR");
    EXPECT_EQ(Record(), "REPAIR");
    EXPECT_THAT(Names("FromList"), ElementsAre("INSTRUMENT"));
    EXPECT_FALSE(Part("ToList").isVisible());
    EXPECT_FALSE(Part("imgArrow1").isVisible());
    EXPECT_TRUE(Part("imgArrow0").isVisible());
    for (const char* list : {"FlxGrid0", "FromList"}) ClickBelow(list);
    EXPECT_EQ(Record(), "REPAIR") << "an empty cell is no choice";

    const QPoint place = PlaceOf("FromList", "INSTRUMENT");
    QWidget* owners = List("FromList").viewport();
    QTest::mouseClick(owners, Qt::LeftButton, {}, place);
    QTest::mouseDClick(owners, Qt::LeftButton, {}, place);
    QTest::mouseRelease(owners, Qt::LeftButton, {}, place);
    EXPECT_EQ(Record(), "INSTRUMENT") << "and not its owner, which came below the mouse";
    EXPECT_THAT(Names("FromList"), ElementsAre("COMMISSION", "MODEL"));
    EXPECT_THAT(Names("ToList"), ElementsAre("BUILD-STEP", "REPAIR"));
    EXPECT_EQ(Marked("FlxGrid3"), "REPAIR") << "it does not move";
    EXPECT_EQ(Part<QLabel>("lblreckey").text(), "INSTR-SERIAL-0310");
    EXPECT_EQ(List("FlxGrid4").model()->index(2, 1).data().toString(), " INSTR-SERIAL-0310");
    EXPECT_EQ(List("flxgrid5").model()->index(0, 1).data().toString(), " INSTR-SERIAL-0310");

    Click("FlxGrid3", "WORKSHOP");
    EXPECT_FALSE(Part("FromList").isVisible());
    EXPECT_FALSE(Part("imgArrow0").isVisible());
    Click("ToList", "MAKER");
    EXPECT_EQ(Record(), "MAKER");
    EXPECT_THAT(List("FromList").model()->index(0, 0).data(Qt::ToolTipRole).toString().toStdString(),
                HasSubstr("SHOP-STAFF<br>SHOP-MASTERS"));
}

TEST_F(ListScreenTest, KeysAloneWalkThereAndBack) {
    EXPECT_FALSE(Part("cmdBack").isEnabled());
    Press(Qt::Key_Backspace);
    for (int i = 0; i < 6; ++i) Press(Qt::Key_Down);
    EXPECT_EQ(Marked("FlxGrid3"), "MATERIAL");
    Press(Qt::Key_M);
    EXPECT_EQ(Marked("FlxGrid3"), "MAKER") << "the first of all that begin so";
    QTest::keyClicks(QApplication::focusWidget(), "at");
    EXPECT_EQ(Marked("FlxGrid3"), "MATERIAL");
    for (int i = 0; i < 2; ++i) Press(Qt::Key_Up);
    EXPECT_EQ(Record(), "BUILD-STEP") << "the mark alone has moved";
    Press(Qt::Key_Return);
    EXPECT_EQ(Record(), "INSTRUMENT");
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &List("FromList"));
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_EQ(Record(), "MODEL");
    EXPECT_EQ(QApplication::focusWidget(), &List("ToList"))
        << "nobody owns it: the way goes on to its members";
    QTest::keyClicks(QApplication::focusWidget(), "i");
    Press(Qt::Key_Return);
    EXPECT_EQ(Record(), "INSTRUMENT");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Record(), "MODEL");
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Record(), "INSTRUMENT");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Record(), "BUILD-STEP");
    EXPECT_FALSE(Part("cmdBack").isEnabled());
}

TEST_F(ListScreenTest, ARecordOfAnyOfTheListsIsShownInTheReport) {
    Click("FlxGrid3", "REPAIR");
    List("FromList").setCurrentIndex(List("FromList").model()->index(0, 0));  // INSTRUMENT
    for (const auto& [list, line] : {std::pair("FlxGrid3", 276u), std::pair("FromList", 220u)}) {
        for (QAction* action : List(list).actions())
            if (action->text() == "Show in re&port") action->trigger();
        const Form* viewer = ui.frame->Find(Screen::ReportViewer);
        ASSERT_TRUE(viewer && viewer->isVisible());
        const auto& view = *viewer->findChild<ReportView*>("RichTextBox1");
        EXPECT_TRUE(QTest::qWaitFor([&] { return view.FirstLine() == line; }, 60'000)) << view.FirstLine();
    }
    EXPECT_THAT(ui.host.messages, IsEmpty());
}

TEST_F(ListScreenTest, RecordsOfAnotherSchemaAreMarkedAndF5FindsThem) {
    Click("FlxGrid3", "REPAIR");
    {
        SchemaRows rows(*ui.app.gConnection, "OTHER");
        rows.Record("SITE");
        rows.Set("SITE-REPAIRS", "SITE", "REPAIR");
    }
    Press(Qt::Key_F5);
    EXPECT_THAT(Names("FlxGrid0"), ElementsAre("EMPSCHM", "OTHER"));
    EXPECT_EQ(Marked("FlxGrid3"), "REPAIR");
    EXPECT_EQ(Record(), "REPAIR");
    ASSERT_THAT(Names("FromList"), ElementsAre("INSTRUMENT", "SITE"));
    const QModelIndex site = List("FromList").model()->index(1, 0);
    EXPECT_EQ(site.data(Qt::AccessibleTextRole).toString(), "SITE in schema OTHER");
    EXPECT_EQ(site.siblingAtRow(0).data(Qt::AccessibleTextRole), QVariant());
    Click("FlxGrid0", "OTHER");
    EXPECT_THAT(Names("FlxGrid3"), ElementsAre("SITE"));
    EXPECT_EQ(Record(), "SITE");
}

TEST_F(ListScreenTest, AStoreThatRefusesIsNamedAndTheScreenStays) {
    ui.app.gConnection->Execute("Alter table Connection_Details rename to Away");
    Click("FlxGrid3", "REPAIR");
    ASSERT_EQ(ui.host.messages.size(), 1u);
    EXPECT_THAT(ui.host.TakeTexts().front(), HasSubstr("Connection_Details"));
    EXPECT_EQ(Record(), "BUILD-STEP");
    EXPECT_THAT(ui.failures, IsEmpty());
    DeleteFile(ui.folder.Path("Database/records.mdb"));
    Press(Qt::Key_F5);
    EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("Please locate and extract IDMS Report File."));
    EXPECT_THAT(Names("FlxGrid0"), IsEmpty());
    EXPECT_THAT(Names("FlxGrid3"), IsEmpty());
    EXPECT_FALSE(Part("lblRecordname").isVisible());
}

TEST(ListScreen, IsEmptyUntilAReportIsExtracted) {
    UiApp ui;
    setstartupform(ui.app, "Listview");
    ui.Start();
    EXPECT_THAT(ui.Log(), HasSubstr("2. Show frm_Listview"));
    const Form* screen = ui.frame->Find(Screen::Listview);
    ASSERT_NE(screen, nullptr);
    EXPECT_TRUE(screen->isVisible());
    const auto* records = screen->findChild<QAbstractItemView*>("FlxGrid3");
    EXPECT_EQ(records->model()->rowCount(), 0);
    EXPECT_FALSE(screen->findChild<QLabel*>("lblRecordname")->isVisible());
    ui.Choose("mnu_Classic_Extract_Report");
    EXPECT_EQ(records->model()->rowCount(), 14);
    EXPECT_EQ(screen->findChild<QLabel*>("lblRecordname")->text(), "BUILD-STEP");
}

}  // namespace
}  // namespace norvelis::ui
