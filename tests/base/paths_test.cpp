#include "base/paths.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <stdexcept>

#include "base/failure.h"
#include "testing/temporary_folder.h"

namespace norvelis {
namespace {

TEST(Paths, BackslashesAreSeparatorsAndDoublesFold) {
    EXPECT_EQ(NativePath("C:\\a\\\\b//c"), "C:/a/b/c");
    EXPECT_EQ(NativePath(""), "");
}

TEST(Paths, ResolvingFindsTheFileInWhateverCaseAndKeepsWhatIsNotThere) {
    TemporaryFolder folder;
    ASSERT_TRUE(CreateFolder(folder.Path("INI/Sub")));
    WriteFile(folder.Path("INI/Sub/Local.Ini"), "x");
    EXPECT_EQ(Resolve(folder.Path() + "\\ini\\SUB\\LOCAL.INI"), folder.Path("INI/Sub/Local.Ini"));
    EXPECT_EQ(Resolve(folder.Path("ini/new/File.txt")), folder.Path("INI/new/File.txt"));
    EXPECT_TRUE(FileExists(folder.Path() + "\\ini\\sub\\local.ini"));
    EXPECT_FALSE(FileExists(folder.Path("INI")));
    EXPECT_TRUE(FolderExists(folder.Path("ini")));
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists("/dev/zero"));
}

TEST(Paths, AFailedWriteLeavesTheOldFileAndNoRest) {
    TemporaryFolder folder;
    WriteFile(folder.Path("a"), "old");
    EXPECT_THROW(WriteFileThrough(folder.Path("a"),
                                  [](const std::string& temporary) {
                                      WriteFile(temporary, "half");
                                      throw std::runtime_error("disk full");
                                  }),
                 std::runtime_error);
    EXPECT_EQ(ReadFile(folder.Path("a")), "old");
    EXPECT_EQ(FilesIn(folder.Path()).size(), 1u);
}

TEST(Paths, AFailedWriteNamesThePathThatWasAskedFor) {
    TemporaryFolder folder;
    for (const std::string name : {"none/a", "folder"}) {
        CreateFolder(folder.Path("folder"));
        try {
            WriteFile(folder.Path(name), "new");
            FAIL() << name;
        } catch (const RuntimeFailure& failure) {
            const std::string what = failure.what();
            EXPECT_NE(what.find(folder.Path(name)), std::string::npos) << what;
            EXPECT_EQ(what.find(".new"), std::string::npos) << what;
        }
    }
    EXPECT_TRUE(FilesIn(folder.Path()).empty());
}

TEST(Paths, WritingThroughALinkReplacesWhatItLeadsTo) {
    TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path("far"));
    WriteFile(folder.Path("far/File"), "old");
    std::filesystem::create_symlink("far/file", folder.Path("link"));  // In other letters, too.
    std::filesystem::create_symlink(folder.Path("link"), folder.Path("further"));
    std::filesystem::create_symlink("far/none", folder.Path("dangling"));
    std::filesystem::create_symlink("round", folder.Path("round"));
    WriteFile(folder.Path("further"), "new");
    WriteFile(folder.Path("dangling"), "new");
    EXPECT_EQ(ReadFile(folder.Path("far/File")), "new");
    EXPECT_EQ(ReadFile(folder.Path("far/none")), "new");
    EXPECT_THROW(WriteFile(folder.Path("round"), "new"), RuntimeFailure);
    for (const char* link : {"link", "further", "dangling", "round"})
        EXPECT_TRUE(std::filesystem::is_symlink(folder.Path(link))) << link;
    EXPECT_EQ(FilesIn(folder.Path("far")), (std::vector<std::string>{"File", "none"}));
}

TEST(Paths, APipeIsNotReplacedByAFile) {
    TemporaryFolder folder;
    const std::string pipe = folder.Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_THROW(WriteFile(pipe, "text"), RuntimeFailure);
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST(Paths, ReadingWhatIsNoFileNamesThePath) {
    TemporaryFolder folder;
    for (const auto& path : {folder.Path("none"), folder.Path()}) {
        try {
            ReadFile(path);
            FAIL();
        } catch (const RuntimeFailure& failure) {
            EXPECT_NE(std::string(failure.what()).find(path), std::string::npos);
        }
    }
}

}  // namespace
}  // namespace norvelis
