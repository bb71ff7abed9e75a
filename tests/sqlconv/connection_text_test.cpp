#include "sqlconv/connection_text.h"

#include <gtest/gtest.h>

namespace norvelis {
namespace {

TEST(ConnectionTextTest, ANameIsADataSourceAndATextStays) {
    EXPECT_EQ(ConnectionText("PAYROLL").Text(), "DSN=PAYROLL");
    EXPECT_EQ(ConnectionText("My Source;x").Text(), "DSN=My Source;x");
    EXPECT_EQ(ConnectionText("DRIVER={SQL Server};PWD={a;}}b};Server=x;;junk").Text(),
              "DRIVER={SQL Server};PWD={a;}}b};Server=x");
}

TEST(ConnectionTextTest, ValuesAreReadAndReplaced) {
    ConnectionText text("dsn=A;Pwd={a;}}b};UID=old");
    EXPECT_EQ(text.Value("PWD"), "a;}b");
    EXPECT_TRUE(text.Has("Dsn"));
    EXPECT_FALSE(text.Has("Server"));
    text.Set("uid", "new");
    text.Set("pwd", "x}y;z");
    EXPECT_EQ(text.Text(), "dsn=A;uid=new;pwd={x}}y;z}");
    EXPECT_EQ(text.Value("pwd"), "x}y;z");
}

TEST(ConnectionTextTest, PasswordsAreNotShown) {
    EXPECT_EQ(ConnectionText("DSN=A;PWD={se;cret};Password=other;UID=me").Shown(),
              "DSN=A;PWD=***;Password=***;UID=me");
    EXPECT_EQ(ConnectionText("PWD={never closed").Shown(), "PWD=***");
}

}  // namespace
}  // namespace norvelis
