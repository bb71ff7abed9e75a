#include <gmock/gmock.h>
#include <sys/fsuid.h>

#include <map>

#include "ui/ui_app.h"

// What is missing, locked or write-protected around the program: said in words, and nothing is lost.
namespace norvelis::ui {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// A folder in which nothing may be written, for as long as this stands. Modes do not bind the
/// administrator, who therefore becomes nobody to the file system.
class WriteProtected {
  public:
    explicit WriteProtected(const std::string& folder) {
        Protect(folder);
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (!entry.is_symlink()) Protect(entry.path());
        }
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0) setfsuid(kNobody);
    }
    ~WriteProtected() {
        setfsuid(geteuid());
        for (const auto& [path, mode] : modes_) fs::permissions(path, mode);
    }
    WriteProtected(const WriteProtected&) = delete;
    WriteProtected& operator=(const WriteProtected&) = delete;

  private:
    void Protect(const fs::path& path) {
        modes_[path] = fs::status(path).permissions();
        fs::permissions(path, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                        fs::perm_options::remove);
    }
    std::map<fs::path, fs::perms> modes_;
};

class TroubleTest : public ::testing::Test {
  protected:
    UiApp ui;

    void SetUp() override {
        ui.Start();
        ui.Choose("mnu_Classic_Extract_Report");
        ui.host.messages.clear();
    }
    std::string Store() const { return ui.folder.Path("Database/records.mdb"); }
    long RecordsInStore() const {
        return Connection::Open(ConnectionString(Store()))->Count("Select count(*) FROM Record_Details");
    }
};

TEST_F(TroubleTest, AWriteProtectedFolderCanBeLookedAtAndEveryRefusalIsSaid) {
    ui.frame->close();
    const std::string before = ui.Log();
    {
        const WriteProtected folder(ui.folder.Path());
        ui.Start();
        EXPECT_THAT(ui.host.TakeTexts(), IsEmpty());
        EXPECT_TRUE(ui.frame->Find(Screen::Treeview)->isVisible());
        ui.Choose("mnuColors");
        ui.Click("lblApply");
        EXPECT_THAT(ui.host.TakeTexts(), ElementsAre("The colors could not be written to:\r\n" +
                                                         ui.folder.Path("Skins/Daylight/Daylight.Ini"),
                                                     HasSubstr(Store() + ": write-protected")));
        ui.Choose("mnu_Classic_Extract_Report");
        EXPECT_THAT(ui.failures, ElementsAre(HasSubstr(Store() + ": write-protected")));
        ui.frame->close();
    }
    EXPECT_EQ(ui.Log(), before);
    EXPECT_EQ(RecordsInStore(), 14);
}

TEST_F(TroubleTest, ASecondProgramMayReadTheSameStore) {
    const auto second = Connection::Open(ConnectionString(Store()));
    ui.Choose("mnu_Classic_Extract_Report");
    EXPECT_THAT(ui.failures, IsEmpty());
    EXPECT_EQ(second->Count("Select count(*) FROM Record_Details"), 14);
}

TEST_F(TroubleTest, AStoreThatASecondProgramWritesIsRefusedInWords) {
    const auto second = Connection::Open(ConnectionString(Store()));
    second->Execute("BEGIN IMMEDIATE");
    ui.Choose("mnu_Classic_Extract_Report");
    EXPECT_THAT(ui.failures, ElementsAre(HasSubstr(Store() + ": locked by another program")));
    EXPECT_FALSE(ui.frame->Context().commands.Busy());
    EXPECT_EQ(RecordsInStore(), 14);
}

TEST_F(TroubleTest, WithoutStencilsNothingIsDrawnAndTheProgramGoesOn) {
    fs::remove(ui.folder.Path("Stencils"));
    for (const char* entry : {"mnu_Draw_Fancy_Single", "mnu_Draw_Fancy_Separate"}) {
        ui.Choose(entry);
        EXPECT_THAT(ui.host.TakeTexts(),
                    Contains("Visio is not installed. Please install Visio 2002 or better."))
            << entry;
    }
    EXPECT_THAT(ui.failures, IsEmpty());
    EXPECT_TRUE(ui.frame->isVisible());
}

}  // namespace
}  // namespace norvelis::ui
