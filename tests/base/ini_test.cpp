#include "base/ini.h"

#include <gtest/gtest.h>

#include "base/paths.h"
#include "testing/temporary_folder.h"

namespace norvelis {
namespace {

TEST(Ini, ReadsWithoutRegardToCaseAndCutsLongValues) {
    TemporaryFolder folder;
    const auto file = folder.Path("Local.Ini");
    WriteFile(file, "; a remark\r\n[skins]\r\n UseSkins = True \r\n;UseSkins=no\r\n[Other]\r\nLong=" +
                        std::string(300, 'x'));
    EXPECT_EQ(ReadINIValue("Skins", "USESKINS", file), "True");
    EXPECT_EQ(ReadINIValue("other", "long", file).size(), 255u);
    EXPECT_EQ(ReadINIValue("Skins", "Long", file), "");
    EXPECT_EQ(ReadINIValue("Skins", "UseSkins", folder.Path("none.ini")), "");
    EXPECT_EQ(ReadINIValue("Skins", "UseSkins", folder.Path("LOCAL.INI")), "True");
}

TEST(Ini, WritingLeavesEveryOtherByteAlone) {
    TemporaryFolder folder;
    const auto file = folder.Path("a.ini");
    WriteFile(file, "; top\r\n[One]\r\nA=1\r\n; mid\r\n\r\n[Two]\r\nB=2");
    EXPECT_TRUE(WriteINIValue("one", "a", "9", file));
    EXPECT_TRUE(WriteINIValue("One", "New", "n", file));
    EXPECT_TRUE(WriteINIValue("Three", "C", "3", file));
    EXPECT_EQ(ReadFile(file),
              "; top\r\n[One]\r\na=9\r\n; mid\r\nNew=n\r\n\r\n[Two]\r\nB=2\r\n[Three]\r\nC=3\r\n");
}

TEST(Ini, AFileIsMadeWhenMissingAndARefusalIsToldNotThrown) {
    TemporaryFolder folder;
    EXPECT_TRUE(WriteINIValue("S", "K", "v", folder.Path("new.ini")));
    EXPECT_EQ(ReadINIValue("S", "K", folder.Path("new.ini")), "v");
    EXPECT_FALSE(WriteINIValue("S", "K", "v", folder.Path("no/such/folder.ini")));
    EXPECT_FALSE(WriteINIValue("S", "K", "v", ""));
}

}  // namespace
}  // namespace norvelis
