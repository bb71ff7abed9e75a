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
    EXPECT_EQ(ShownSource("PAY ROLL"), "PAY ROLL");
    EXPECT_EQ(ShownSource("a=b ; c"), "a=b ; c");
    const std::string kept = "DSN=A;PWD={se;cret}";
    EXPECT_EQ(TypedSource(ShownSource(kept), kept), kept);
    EXPECT_EQ(TypedSource("DSN=B;Pwd=***;UID=x", kept), "DSN=B;Pwd={se;cret};UID=x");
    EXPECT_EQ(TypedSource("DSN=B;PWD=new", kept), "DSN=B;PWD=new");
}

}  // namespace
}  // namespace norvelis
