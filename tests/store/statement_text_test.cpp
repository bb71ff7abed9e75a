#include "store/statement_text.h"

#include <gtest/gtest.h>

#include "base/failure.h"

namespace norvelis {
namespace {

TEST(StatementText, ClassicShapesBecomeTheEnginesWords) {
    const struct {
        const char *classic, *sql, *table;
    } cases[] = {
        {"Delete * FROM Parents", "Delete FROM Parents", ""},
        {"delete FROM schedules where scheduleid =?", "delete FROM schedules where scheduleid = ?", ""},
        {"Select * FROM Connection_Details where schemaname=? and set =?",
         "Select rowid FROM Connection_Details where schemaname = ? and \"set\" = ? ORDER BY rowid",
         "Connection_Details"},
        {"Select * FROM Parents where schemaname =? order by recordname asc",
         "Select rowid FROM Parents where schemaname = ? order by recordname asc, rowid", "Parents"},
        {"Select distinct(schemaname) FROM Parents",
         "Select schemaname FROM Parents GROUP BY schemaname ORDER BY min(rowid)", ""},
        {"Update t set set = ?", "Update t set \"set\" = ?", ""},
        {"Select * FROM schedules where nextschedule < #12/31/1899# and processed = false",
         "Select rowid FROM schedules where nextschedule < 1.000000 and processed = 0 ORDER BY rowid",
         "schedules"},
        {"Select count(*) FROM t where a = 'set # false'",
         "Select count ( * ) FROM t where a = 'set # false'", ""},
    };
    for (const auto& c : cases) {
        const StatementText text = Translate(c.classic);
        EXPECT_EQ(text.sql, c.sql);
        EXPECT_EQ(text.table, c.table) << c.classic;
    }
    EXPECT_THROW(Translate("Select * FROM t where d < #soon#"), RuntimeFailure);
}

}  // namespace
}  // namespace norvelis
