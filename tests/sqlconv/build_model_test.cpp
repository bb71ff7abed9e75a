#include "sqlconv/tables/build_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "base/text.h"
#include "sqlconv/kept_tables.h"
#include "sqlconv/schema_of.h"

namespace norvelis::tables {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const auto& name : names) text += (text.empty() ? "" : " ") + name;
    return text;
}

SchemaModel ModelOf(const dictionary::SchemaContents& contents, const std::string& options = {}) {
    return BuildModel(contents, ReadOptions(options, contents.name), {});
}

const Table& Named(const SchemaModel& model, const std::string& name) {
    const auto found = std::ranges::find(model.tables, name, &Table::name);
    if (found == model.tables.end()) throw std::runtime_error("no table " + name);
    return *found;
}

std::string ColumnsOf(const Table& table) {
    std::vector<std::string> names;
    for (const Column& column : table.columns) names.push_back(column.name);
    return Joined(names);
}

std::vector<std::string> IndexesOf(const Table& table) {
    std::vector<std::string> lines;
    for (const Index& index : table.indexes) {
        std::string line = (index.unique ? "unique " : "") + index.name;
        for (const auto& key : index.keys) line += " " + key.column + (key.descending ? "-" : "");
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> KeysOf(const Table& table) {
    std::vector<std::string> lines;
    for (const ForeignKey& key : table.foreignKeys)
        lines.push_back(key.name + ": " + Joined(key.columns) + " -> " + key.owner + " " +
                        Joined(key.ownerColumns) + (key.cascade ? " cascade" : "") +
                        (key.ownerLater ? " later" : ""));
    return lines;
}

std::string WhyOf(const SchemaModel& model, const std::string& name) {
    std::string why;
    for (const Outcome& outcome : model.outcomes) {
        if (outcome.name == name && outcome.lookAt) why += outcome.why + ";";
    }
    return why;
}

TEST(SchemaModel, GroupsRepetitionsAndFillers) {
    const auto model = ModelOf(SchemaOf({RecordOf(
        "ORDER",
        {FieldOf("02 NUM", "9(6)                       1", "DISPLAY", "1", "6"),
         FieldOf("02 DUE", "7", "DISPLAY", "7"), FieldOf("03 YEAR", "9(4)", "DISPLAY", "7", "10"),
         FieldOf("03 DAY", "9(3)", "DISPLAY", "11", "13"), FieldOf("02 FILLER"),
         FieldOf("03 NOTE", "X(8)", "DISPLAY", "14", "21"),
         FieldOf("02 FILLER", "X(9)", "DISPLAY", "22", "30"), FieldOf("02 LINE", "", "GROUP OCCURS 0 TO 8"),
         FieldOf("03 ITEM", "X(3)", "DISPLAY", "31", "33"),
         FieldOf("03 PRICE", "S9(5)", "COMP-3 OCCURS 2", "34", "39"),
         FieldOf("02 RATE", "", "COMP-1", "103", "106")},
        "NUM DUE")}));
    EXPECT_EQ(ColumnsOf(Named(model, "order")), "num year day note rate");
    EXPECT_EQ(Joined(Named(model, "order").primaryKey), "num year day");
    EXPECT_EQ(ColumnsOf(Named(model, "order_line")), "num year day seq item");
    const Table& prices = Named(model, "order_price");
    EXPECT_EQ(ColumnsOf(prices), "num year day line_seq seq price");
    EXPECT_EQ(Joined(prices.primaryKey), "num year day line_seq seq");
    EXPECT_EQ(prices.Find("line_seq")->most, 8);
    EXPECT_EQ(prices.Find("seq")->most, 2);
    EXPECT_THAT(KeysOf(prices),
                ElementsAre("fk_order_price: num year day line_seq -> order_line num year day seq cascade"));
    EXPECT_THAT(Named(model, "order").notes, IsEmpty());
}

// The dictionary holds no REDEFINES: only the positions show it.
TEST(SchemaModel, OneColumnForTheSameBytes) {
    const auto model = ModelOf(SchemaOf({RecordOf(
        "R", {FieldOf("02 FILLER", "X(8)", "DISPLAY", "1", "8"), FieldOf("02 A", "X(8)", "DISPLAY", "1", "8"),
              FieldOf("02 B"), FieldOf("03 B1", "X(2)", "DISPLAY", "1", "2"),
              FieldOf("03 B2", "X(6)", "DISPLAY", "3", "8"), FieldOf("02 T", "", "GROUP OCCURS 4"),
              FieldOf("03 V", "X(5)", "DISPLAY", "9", "13"), FieldOf("02 W", "X(5)", "DISPLAY", "24", "28"),
              FieldOf("02 Z", "X", "DISPLAY", "29", "29")})}));
    EXPECT_EQ(ColumnsOf(Named(model, "r")), "record_id a z");
    EXPECT_EQ(ColumnsOf(Named(model, "r_t")), "record_id seq v");
    EXPECT_THAT(WhyOf(model, "B2"), HasSubstr("lies over A"));
    EXPECT_THAT(WhyOf(model, "W"), HasSubstr("lies over T"));
    EXPECT_EQ(Named(model, "r").notes.size(), 3u);
    const auto other = ModelOf(SchemaOf({RecordOf("R", {FieldOf("02 A", "X(8)", "DISPLAY", "1", "8"),
                                                        FieldOf("02 B", "9(8)", "DISPLAY", "1", "8")})}),
                               "[field R A]\nleave-out = yes\n");
    EXPECT_EQ(ColumnsOf(Named(other, "r")), "record_id b");
}

TEST(SchemaModel, KeyOfTheRecordOrANumber) {
    const auto fields = std::vector{FieldOf("02 A", "9(4)"), FieldOf("02 B", "X(4)"),
                                    FieldOf("02 C", "X(4)", "DISPLAY OCCURS 3")};
    const auto keyOf = [&fields](const std::string& calcKey, const std::string& dn = "DN",
                                 const std::string& options = {}) {
        return Joined(
            Named(ModelOf(SchemaOf({RecordOf("R", fields, calcKey, dn)}), options), "r").primaryKey);
    };
    EXPECT_EQ(keyOf("B A"), "b a");
    EXPECT_EQ(keyOf("A", ""), "record_id");
    EXPECT_EQ(keyOf(""), "record_id");
    EXPECT_EQ(keyOf("A NO-FIEL"), "record_id");
    EXPECT_EQ(keyOf("A C"), "record_id");
    EXPECT_EQ(keyOf("", "", "[record R]\nkey = B, A\n"), "b a");
    EXPECT_EQ(keyOf("A", "DN", "[record R]\nkey = none\n"), "record_id");
    EXPECT_EQ(keyOf("A", "DN", "[record R]\nkey = NOTHING\n"), "a");
    const auto model = ModelOf(SchemaOf({RecordOf("R", fields, "A", "")}));
    EXPECT_THAT(IndexesOf(Named(model, "r")), ElementsAre("ix_calc_r a"));
    // What fills the 30 characters that the dictionary holds may go on.
    const std::string longName(28, 'L');
    const auto cut = ModelOf(
        SchemaOf({RecordOf("R", {FieldOf("02 " + longName, "9"), FieldOf("02 K", "9")}, longName + " K")}));
    EXPECT_EQ(Joined(Named(cut, "r").primaryKey), "record_id");
    EXPECT_THAT(IndexesOf(Named(cut, "r")), ElementsAre("ix_calc_r " + LowerCase(longName) + " k"));
    // A part without a name, and a name that several fields have, are no key.
    for (const char* key : {"G", "N"}) {
        const auto odd = ModelOf(SchemaOf({RecordOf(
            "R", {FieldOf("02 G"), FieldOf("03 N", "9"), FieldOf("03 FILLER", "9"), FieldOf("02 N", "9")},
            key)}));
        EXPECT_EQ(Joined(Named(odd, "r").primaryKey), "record_id") << key;
        EXPECT_NE(WhyOf(odd, "R"), "") << key;
    }
}

TEST(SchemaModel, SetsAreForeignKeysInTheirOrder) {
    const std::vector fields = {FieldOf("02 NAME-0415"), FieldOf("03 FIRST-0415", "X(9)"),
                                FieldOf("03 LAST-0415", "X(9)"), FieldOf("02 RANK-0415", "9(3)")};
    const auto model = ModelOf(SchemaOf(
        {RecordOf("MEMBER", fields), RecordOf("OWNER", {FieldOf("02 K", "9(4)")}, "K"), RecordOf("LONE", {})},
        {SetOf("S1", "OWNER", "MEMBER", "MA ASC NAME DL"), SetOf("S2", "OWNER", "MEMBER", "OM DSC RANK DN"),
         SetOf("S3", "LONE", "MEMBER", "MM LAST"), SetOf("S4", "OWNER", "MEMBER", "MA ASC NO-SUCH DN"),
         SetOf("S5", "GONE", "MEMBER", "MA NEXT"), SetOf("S6", "OWNER", "MEMBER", "?")}));
    ASSERT_EQ(model.tables.back().name, "member");
    const Table& member = model.tables.back();
    EXPECT_THAT(KeysOf(member),
                ElementsAre("fk_s1_member: s1_k -> owner k", "fk_s2_member: s2_k -> owner k",
                            "fk_s3_member: s3_record_id -> lone record_id", "fk_s4_member: s4_k -> owner k",
                            "fk_s6_member: s6_k -> owner k"));
    EXPECT_THAT(IndexesOf(member),
                ElementsAre("ix_s1_member s1_k first_0415 last_0415", "unique ix_s2_member s2_k rank_0415-",
                            "ix_s3_member s3_record_id s3_seq", "ix_s4_member s4_k", "ix_s6_member s6_k"));
    const auto required = [&member](const char* name) { return member.Find(name)->required; };
    EXPECT_TRUE(required("s1_k"));
    EXPECT_FALSE(required("s2_k") || required("s3_record_id") || required("s6_k"));
    EXPECT_THAT(WhyOf(model, "S4"), HasSubstr("no field of the record begins with NO-SUCH"));
    EXPECT_THAT(WhyOf(model, "S5"), HasSubstr("no table for its owner GONE"));
    EXPECT_NE(WhyOf(model, "S6"), "");
}

TEST(SchemaModel, CyclesCloseBehindTheTables) {
    const auto model =
        ModelOf(SchemaOf({RecordOf("A", {}), RecordOf("B", {}), RecordOf("C", {}), RecordOf("D", {})},
                         {SetOf("D-A", "D", "A", "MA NEXT"), SetOf("A-B", "A", "B", "MA NEXT"),
                          SetOf("B-A", "B", "A", "MA NEXT"), SetOf("B-C", "B", "C", "MA NEXT"),
                          SetOf("C-B", "C", "B", "OA NEXT"), SetOf("A-A", "A", "A", "OM NEXT")}));
    std::vector<std::string> order;
    for (const Table& table : model.tables) order.push_back(table.name);
    EXPECT_THAT(order, ElementsAre("d", "a", "b", "c"));
    EXPECT_THAT(KeysOf(Named(model, "a")), ElementsAre("fk_d_a_a: d_a_record_id -> d record_id",
                                                       "fk_b_a_a: b_a_record_id -> b record_id later",
                                                       "fk_a_a_a: a_a_record_id -> a record_id"));
    EXPECT_THAT(WhyOf(model, "B-A"), HasSubstr("no first row can go in"));
    EXPECT_EQ(WhyOf(model, "C-B"), "");
    EXPECT_EQ(WhyOf(model, "D-A"), "");
}

TEST(SchemaModel, IndexSets) {
    const std::string longName(30, 'N');
    auto member =
        RecordOf("M", {FieldOf("02 DAY"), FieldOf("03 YEAR", "9(4)"), FieldOf("03 MONTH", "99"),
                       FieldOf("02 " + longName, "X(9)"), FieldOf("02 T", "X", "DISPLAY OCCURS 2")});
    member.indexes[0] = "IX1";
    member.indexes[1] = "NO-KEYS";
    const auto model = ModelOf(SchemaOf(
        {RecordOf("O", {FieldOf("02 K", "9")}, "K"), member}, {{"IX2", "O", "M", "\r\nOA SORTED DN"}},
        {{"IX1", "M", "", "OA SORTED DL", {{"DAY", "DSC"}, {longName.substr(0, 29), "ASC"}}},
         {"IX2", "M", "", "OA SORTED DN", {{"MONTH", "ASC"}}},
         {"IX3", "M", "", "MA SORTED DN", {{"T", "ASC"}}},
         {"IX4", "GONE", "", "MA SORTED DN", {{"T", "ASC"}}}}));
    const Table& table = Named(model, "m");
    EXPECT_THAT(IndexesOf(table),
                ElementsAre("ix_ix1_m year- month- " + std::string(30, 'n'), "unique ix_ix2_m ix2_k month"));
    EXPECT_EQ(Joined(table.indexes[1].optional), "ix2_k");
    EXPECT_THAT(SqlserverDialect().CreateIndex(table, table.indexes[1]),
                HasSubstr("WHERE ix2_k IS NOT NULL"));
    EXPECT_THAT(WhyOf(model, "IX3"), HasSubstr("T occurs several times"));
    EXPECT_THAT(WhyOf(model, "IX4"), HasSubstr("no table for its member GONE"));
    EXPECT_THAT(WhyOf(model, "NO-KEYS"), HasSubstr("no keys"));
}

TEST(SchemaModel, BadInputIsReported) {
    const auto model = ModelOf(SchemaOf(
        {RecordOf("R", {FieldOf("02 A", "HELLO"), FieldOf("02 B", "9(4)", "DISPLAY", "9", "5"),
                        FieldOf("02 C", "9(4)", "COMP", "10", "14"), FieldOf("02 D")}),
         RecordOf("EMPTY", {}), RecordOf("FILL", {FieldOf("02 FILLER", "X(4)")}),
         RecordOf("TWICE",
                  {FieldOf("02 E", "9"), FieldOf("02 e", "X"), FieldOf("02 F", "9", "DISPLAY OCCURS 0"),
                   FieldOf("02 G", "", "GROUP                     OCCURS 0 T"), FieldOf("03 H", "9")})}));
    EXPECT_EQ(ColumnsOf(Named(model, "r")), "record_id b c");
    EXPECT_EQ(ColumnsOf(Named(model, "empty")), "record_id");
    EXPECT_EQ(ColumnsOf(Named(model, "fill")), "record_id");
    EXPECT_THAT(WhyOf(model, "A"), HasSubstr("\"HELLO\" is no picture"));
    EXPECT_THAT(WhyOf(model, "B"), HasSubstr("positions 9 to 5 contradict"));
    EXPECT_THAT(WhyOf(model, "C"), HasSubstr("5 bytes where its picture asks for 2"));
    EXPECT_THAT(WhyOf(model, "D"), HasSubstr("neither picture nor items"));
    EXPECT_NE(WhyOf(model, "EMPTY"), "");
    EXPECT_EQ(WhyOf(model, "E"), "");
    EXPECT_EQ(WhyOf(model, "e"), "its name is taken in the table;");
    EXPECT_EQ(WhyOf(model, "F"), "it occurs no times;");
    EXPECT_EQ(WhyOf(model, "G"), "the number of occurrences is cut off;");
    EXPECT_THAT(Named(model, "twice_f").notes, ElementsAre("F: it occurs no times"));
}

TEST(SchemaModel, NamesOfTheServersOwnTables) {
    const auto contents = SchemaOf({RecordOf("PG-CLASS", {FieldOf("02 PG-A", "9")}), RecordOf("R", {})});
    const auto options = ReadOptions("[record R]\nname = sqlite_r\n", contents.name);
    const auto names = [&](const Dialect& dialect) {
        std::string all;
        for (const Table& table : MakeKeptTables(contents, options, dialect).model.tables)
            all += table.name + " " + table.columns.back().name + " ";
        return all;
    };
    EXPECT_EQ(names(SqliteDialect()), "pg_class pg_a _sqlite_r record_id ");
    EXPECT_EQ(names(PostgresqlDialect()), "_pg_class pg_a sqlite_r record_id ");
}

// The server has the earlier key, to which nothing new can refer.
TEST(SchemaModel, NoNewKeyLeadsToAChangedOne) {
    const std::vector fields = {FieldOf("02 K", "9(4)"), FieldOf("02 L", "X(4)")};
    const auto since = [&](const dictionary::RecordContents& owner, const Dialect& dialect) {
        const auto earlier = SchemaOf({RecordOf("O", fields, "K"), RecordOf("M", {})});
        const auto later = SchemaOf({owner, RecordOf("M", {}), RecordOf("NEW", {})},
                                    {SetOf("S1", "O", "M", "MA NEXT"), SetOf("S2", "O", "NEW", "MA NEXT")});
        return ScriptText(MakeDifference(earlier, later, {}, dialect).script, dialect);
    };
    const auto otherType = RecordOf("O", {FieldOf("02 K", "X(4)"), fields[1]}, "K");
    for (const Dialect* dialect : AllDialects()) {
        for (const auto& owner : {RecordOf("O", fields, "L"), RecordOf("O", fields), otherType}) {
            const std::string script = since(owner, *dialect);
            EXPECT_EQ(script.find("REFERENCES"), std::string::npos) << script;
            EXPECT_THAT(script,
                        HasSubstr("-- Table m: no foreign key fk_s1_m: the key of o is another one now\n"));
            EXPECT_THAT(script, HasSubstr("-- no foreign key fk_s2_new: the key of o is another one now\n"));
        }
        EXPECT_THAT(since(RecordOf("O", fields, "K"), *dialect), HasSubstr("REFERENCES o (k)"));
    }
}

TEST(SchemaModel, WideTextTakesTwoBytesInAKey) {
    const auto contents = SchemaOf({RecordOf("R", {FieldOf("02 K", "G(500)")}, "K")});
    EXPECT_EQ(Joined(MakeKeptTables(contents, {}, SqlserverDialect()).model.tables[0].primaryKey),
              "record_id");
    EXPECT_EQ(Joined(MakeKeptTables(contents, {}, PostgresqlDialect()).model.tables[0].primaryKey), "k");
}

TEST(SchemaModel, MoreColumnsThanATableTakes) {
    std::vector<dictionary::FieldContents> fields = {FieldOf("02 K", "9(4)")};
    for (int i = 0; i < 1100; ++i)
        fields.push_back(FieldOf("02 FIELD-OF-A-LONG-NAME-" + std::to_string(i), "X(30)"));
    const auto contents =
        SchemaOf({RecordOf("WIDE", fields, "K")}, {},
                 {{"IX", "WIDE", "", "MA SORTED DL", {{"FIELD-OF-A-LONG-NAME-1099", "ASC"}}}});
    for (const Dialect* dialect : AllDialects()) {
        const SchemaModel model = MakeKeptTables(contents, {}, *dialect).model;
        std::size_t columns = 0;
        for (const Table& table : model.tables) {
            EXPECT_LE(static_cast<double>(table.columns.size()), dialect->ServerLimits().columns);
            EXPECT_EQ(Joined(table.primaryKey), "k");
            columns += table.columns.size() - 1;
        }
        EXPECT_EQ(columns, 1100u) << dialect->Name();
        EXPECT_EQ(model.tables.size() > 1, dialect->Name() != "sqlite");
        std::vector<std::string> all;
        for (const Table& table : model.tables) {
            for (const Column& column : table.columns) all.push_back(column.name);
        }
        EXPECT_EQ(std::ranges::count(all, "field_of_a_long_name_500"), 1);
        EXPECT_NE(model.tables.front().Find("field_of_a_long_name_1099"), nullptr);
    }
}

TEST(SchemaModel, OptionsAndTheirMistakes) {
    const auto contents =
        SchemaOf({RecordOf("CUST", {FieldOf("02 NUM-0415", "9(4)"), FieldOf("02 NAME-0415", "X(9)"),
                                    FieldOf("02 TEL-0415", "X(9)", "DISPLAY OCCURS 2")}),
                  RecordOf("GONE", {})});
    const auto model =
        ModelOf(contents,
                "; words\n[schema]\nsuffix = drop\ncase = dictionary\noccurs-columns = 2\nsufix = keep\n"
                "[record GONE]\nleave-out = yes\n[record NONE]\n[field CUST NAME-0415]\ntype = CLOB; x\n"
                "name = full_name\n[field CUST NUM-0415]\ntype = INT); DROP\n[field CUST NOPE]\nhello\n"
                "[schema OTHER]\ncase = lower\n[schema TESTSCHM]\ncase = UPPER\n");
    ASSERT_EQ(model.tables.size(), 1u);
    EXPECT_EQ(ColumnsOf(model.tables[0]), "record_id NUM full_name TEL_1 TEL_2");
    EXPECT_EQ(model.tables[0].Find("full_name")->type.given, "CLOB");
    EXPECT_EQ(WhyOf(model, "line 6"), "\"sufix\" is no option of a schema;");
    EXPECT_EQ(WhyOf(model, "line 9"), "the schema has no record \"NONE\";");
    EXPECT_EQ(WhyOf(model, "line 14"), "\"INT)\" is no type;");
    EXPECT_EQ(WhyOf(model, "line 15"), "the record CUST has no field \"NOPE\";");
    EXPECT_EQ(WhyOf(model, "line 16"), "\"hello\" is neither a [section] nor an option = value;");
    EXPECT_EQ(WhyOf(model, "line 20"), "\"UPPER\" is neither lower nor dictionary;");
    EXPECT_THAT(ReadOptions(SampleOptions(), "X").mistakes, IsEmpty());
    for (const char* more :
         {"NOT NULL", "INTEGER PRIMARY KEY", "VARCHAR(10) not null UNIQUE", "INTEGER CHECK(0)"})
        EXPECT_EQ(ReadOptions(std::string("[field R F]\ntype = ") + more, "X").mistakes.size(), 1u) << more;
    for (const char* type : {"TIMESTAMP WITH TIME ZONE", "DOUBLE PRECISION", "INT UNSIGNED", "DECIMAL(9,2)"})
        EXPECT_THAT(ReadOptions(std::string("[field R F]\ntype = ") + type, "X").mistakes, IsEmpty());
    const auto left = ModelOf(
        SchemaOf({RecordOf("CUST", {FieldOf("02 G"), FieldOf("03 A", "9(4)"), FieldOf("02 FILLER", "X")})}),
        "[record CUST]\nleave-out = yes\n");
    std::string values;
    for (const Outcome& outcome : left.outcomes) values += outcome.name + (outcome.isValue ? "+ " : " ");
    EXPECT_EQ(values, "CUST+ G A+ ");
}

TEST(SchemaModel, WishesThatCannotBeFulfilledAreTold) {
    const auto contents = SchemaOf(
        {RecordOf("CUST", {FieldOf("02 NUM", "9(4)"), FieldOf("02 G", "", "GROUP OCCURS 3"),
                           FieldOf("03 A", "X"), FieldOf("02 TEL", "X(9)", "DISPLAY OCCURS 1 TO 2")})});
    const auto model =
        ModelOf(contents,
                "[field CUST NUM]\noccurs = columns\n[field CUST G]\noccurs = columns\ntype = INT\n"
                "[field CUST TEL]\noccurs = columns\n");
    EXPECT_EQ(WhyOf(model, "line 1"), "NUM does not occur several times;");
    EXPECT_EQ(WhyOf(model, "line 3"),
              "G is a group, which has no type of its own;G is a group: its occurrences stay a table;");
    EXPECT_EQ(WhyOf(model, "line 6"), "TEL occurs no fixed number of times: they stay a table;");
}

}  // namespace
}  // namespace norvelis::tables
