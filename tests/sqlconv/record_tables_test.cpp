#include "sqlconv/record_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "sqlconv/dictionary_rows.h"
#include "sqlconv/name_checks.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

class RecordTables : public ::testing::Test {
  protected:
    TestApp test;
    Connection& store = *test.app.gConnection;
};

TEST_F(RecordTables, AStatementHoldsKeyAndFieldsWithTheirNumbers) {
    AddCustomer(store);
    EXPECT_EQ(RecordTableStatement(store, "CUSTOMER", "SALES"), kCustomerStatement);
    EXPECT_EQ(RecordTableStatement(store, "NOBODY", "SALES"), "");
    EXPECT_EQ(DatabaseStatement("My-Db"), "CREATE DATABASE My-Db");
}

TEST_F(RecordTables, NamesAndPicturesStayAsOddAsTheyAre) {
    AddRecord(store, "S", "SELECT", std::nullopt);
    AddField(store, "S", "SELECT", "filler", "X");
    AddField(store, "S", "SELECT", " DATE ", " 9(4) ");
    AddField(store, "S", "SELECT", "O'NEIL;)", "V9");
    AddField(store, "S", "SELECT", "GROUP", "112");
    EXPECT_EQ(RecordTableStatement(store, "SELECT", "My Db(x)"),
              "Create Table My_Db_x_.dbo.SELECT_c (RecKey_ID INT IDENTITY(1,1) NOT NULL, DATE_c_1 INT, "
              "O'NEIL;__2 INT, GROUP_3 )");
    AddRecord(store, "S", "EMPTY", "");
    EXPECT_EQ(RecordTableStatement(store, "EMPTY", "int"),
              "Create Table int_c.dbo.EMPTY (_ID INT IDENTITY(1,1) NOT NULL)");
}

TEST_F(RecordTables, ANameOfTwoSchemasGivesEveryColumnTwice) {
    AddRecord(store, "A", "JOB", "JOB-ID");
    AddField(store, "A", "JOB", "TITLE", "X(20)");
    AddRecord(store, "B", "JOB", "KEY");
    AddField(store, "B", "JOB", "PAY", "9");
    EXPECT_EQ(RecordTableStatement(store, "JOB", "D"),
              "Create Table D.dbo.JOB (JOB_ID_ID INT IDENTITY(1,1) NOT NULL, TITLE_1 CHAR(50), PAY_2 INT, "
              "KEY_ID INT IDENTITY(1,1) NOT NULL, TITLE_1 CHAR(50), PAY_2 INT)");
}

TEST_F(RecordTables, ThereIsRoomForAHundredAndFiftyFields) {
    AddRecord(store, "S", "WIDE", "K");
    for (int i = 0; i < 150; ++i) AddField(store, "S", "WIDE", "F", "9");
    AddField(store, "S", "WIDE", "FILLER", "9");
    EXPECT_TRUE(RecordTableStatement(store, "WIDE", "D").ends_with("F_150 INT)"));
    AddField(store, "S", "WIDE", "F", "9");
    try {
        RecordTableStatement(store, "WIDE", "D");
        FAIL();
    } catch (const RuntimeFailure& failure) {
        EXPECT_EQ(failure.Number(), FailureNumber::SubscriptOutOfRange);
    }
}

TEST_F(RecordTables, RecordsComeByName) {
    for (const char* name : {"ZEBRA", "apple", "MELON"}) AddRecord(store, "S", name, "K");
    AddRecord(store, "OTHER", "BANANA", "K");
    EXPECT_THAT(RecordsOf(store, "S"), ::testing::ElementsAre("apple", "MELON", "ZEBRA"));
}

TEST_F(RecordTables, WhatCouldBeMoreThanANameIsRefused) {
    EXPECT_EQ(RefusedDatabaseName("My-Db 2"), "");
    for (const char* name : {"a;b", "a'b", "a\"b", "[a]", "a]", "a--b", "a/*b", "*/", "a\nb", "a\rb"})
        EXPECT_NE(RefusedDatabaseName(name), "") << name;

    AddRecord(store, "S", "GOOD-1 (A)", "KEY-#@$");
    AddField(store, "S", "GOOD-1 (A)", "F-1", "9");
    AddField(store, "S", "GOOD-1 (A)", "\xC3\x89T\xC3\x89", "");  // A group makes no column.
    const std::vector<std::string> good = {"GOOD-1 (A)"};
    EXPECT_EQ(RefusedRecordName(store, good), "");

    const std::vector<std::string> name = {"A;B"};
    EXPECT_EQ(RefusedRecordName(store, name), "the name of record A;B holds the character \";\"");
    AddRecord(store, "S", "KEYED", "K.1");
    const std::vector<std::string> key = {"KEYED"};
    EXPECT_EQ(RefusedRecordName(store, key), "record KEYED: the key name K.1-ID holds the character \".\"");
    AddRecord(store, "S", "FIELDS", "K");
    AddField(store, "S", "FIELDS", "\xC3\x89T", "9");
    const std::vector<std::string> field = {"FIELDS"};
    EXPECT_EQ(RefusedRecordName(store, field),
              "record FIELDS: the name of field \xC3\x89T holds the character \"\xC3\x89\"");
}

}  // namespace
}  // namespace norvelis
