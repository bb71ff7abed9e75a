#include "base/table_text.h"

#include <gtest/gtest.h>

#include <vector>

namespace norvelis {
namespace {

std::string Csv(const std::vector<std::string_view>& cells) {
    std::string line;
    AppendCsvLine(line, cells);
    return line;
}

TEST(TableText, CellsOfTheClipboardAreQuotedWhereTheyWouldPart) {
    std::string text;
    AppendTabLine(text, std::vector<std::string_view>{"", "a b", "a\tb", "two\r\nlines", "say \"so\""});
    AppendTabLine(text, std::vector<std::string_view>{"=1+1", "-", "a,b"});
    EXPECT_EQ(text, "\ta b\t\"a\tb\"\t\"two\r\nlines\"\t\"say \"\"so\"\"\"\n=1+1\t-\ta,b\n");
}

TEST(TableText, CellsOfCsvAreQuotedWhereTheyWouldPartOrShrink) {
    EXPECT_EQ(Csv({"plain", "", "in ner"}), "plain,,in ner\r\n");
    EXPECT_EQ(Csv({"a,b", "a;b", "a\tb", "a\r\nb", "\""}),
              "\"a,b\",\"a;b\",\"a\tb\",\"a\r\nb\",\"\"\"\"\r\n");
    EXPECT_EQ(Csv({" before", "behind "}), "\" before\",\"behind \"\r\n");
}

TEST(TableText, NoCellOfCsvIsAFormula) {
    const struct {
        std::string_view cell, written;
    } cases[] = {{"=1+1", "'=1+1"},
                 {"+SUM(A1)", "'+SUM(A1)"},
                 {"-9(5).99", "'-9(5).99"},
                 {"@cmd", "'@cmd"},
                 {" =A1", "' =A1"},
                 {"\t=A1", "\"'\t=A1\""},
                 {"=A1,B1", "\"'=A1,B1\""},
                 {"-", "'-"},
                 {"-12.5", "-12.5"},
                 {"+7", "+7"},
                 {"a=1", "a=1"},
                 {"S9(5)-", "S9(5)-"}};
    for (const auto& c : cases) EXPECT_EQ(Csv({"x", c.cell}), "x," + std::string(c.written) + "\r\n");
}

}  // namespace
}  // namespace norvelis
