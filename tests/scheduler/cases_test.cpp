#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "base/failure.h"
#include "base/text.h"
#include "scheduler/calculate.h"
#include "scheduler/next_time.h"
#include "scheduler/schedule_xml.h"

// The cases of cases.txt, whose head says what the words of a block mean.
namespace norvelis {
namespace {

struct Case {
    std::string name, attributes, runs;
    DateTime now = ToDateTime({2026, 1, 1, 0, 0, 0}), from = 0;

    XmlNode Element() const {
        XmlNode element = LoadXML("<schedule/>");
        std::istringstream words(attributes);
        for (std::string word; words >> word;) {
            const auto equals = word.find('=');
            element.SetAttribute(word.substr(0, equals), word.substr(equals + 1));
        }
        return element;
    }

    /// The expected runs as general date text.
    std::vector<std::string> Expected() const {
        std::vector<std::string> expected;
        std::istringstream list(runs);
        for (std::string run; std::getline(list, run, ',');)
            expected.push_back(GeneralDateText(ParseDateTime(run).value()));
        return expected;
    }

    std::vector<std::string> RunsFrom(const std::string& start, std::size_t count) const {
        FutureRuns future = Calculate(Element(), start, static_cast<int>(count) - 1, now).value();
        future.lstFuture.insert(future.lstFuture.begin(), future.txtNextSchedule);
        return future.lstFuture;
    }
};

std::vector<Case> ReadCases() {
    std::vector<Case> cases;
    std::ifstream file(SCHEDULE_CASES);
    for (std::string line; std::getline(file, line);) {
        const std::string word = line.substr(0, line.find(' '));
        const std::string rest(Trim(line.substr(std::min(word.size(), line.size()))));
        if (word == "case") cases.emplace_back().name = rest;
        if (word == "with") cases.back().attributes = rest;
        if (word == "now") cases.back().now = ParseDateTime(rest).value();
        if (word == "from") cases.back().from = ParseDateTime(rest).value();
        if (word == "runs") cases.back().runs = rest;
    }
    return cases;
}

class Cases : public testing::Test {
  protected:
    const std::vector<Case> cases = ReadCases();
    static bool Fails(const Case& c) { return c.runs.starts_with("failure"); }
};

TEST_F(Cases, GiveTheRunsThatTheFileSays) {
    ASSERT_GT(cases.size(), 40u);
    for (const Case& c : cases) {
        const std::string from = GeneralDateText(c.from);
        if (Fails(c)) {
            try {
                c.RunsFrom(from, 1);
                ADD_FAILURE() << c.name;
            } catch (const RuntimeFailure& failure) {
                EXPECT_EQ("failure " + std::to_string(static_cast<int>(failure.Number())), c.runs) << c.name;
            }
        } else {
            EXPECT_EQ(c.RunsFrom(from, c.Expected().size()), c.Expected()) << c.name;
        }
    }
}

// Whoever asks again from the k-th run gets the runs behind it.
TEST_F(Cases, GoOnFromEachOfTheirRuns) {
    for (const Case& c : cases) {
        if (Fails(c)) continue;
        const std::vector<std::string> expected = c.Expected();
        for (std::size_t k = 1; k < expected.size(); ++k) {
            const std::vector<std::string> behind(expected.begin() + static_cast<std::ptrdiff_t>(k),
                                                  expected.end());
            EXPECT_EQ(c.RunsFrom(expected[k - 1], behind.size()), behind)
                << c.name << " from " << expected[k - 1];
        }
    }
}

// The record left by one calculation is where the next one goes on. (A time before the present moment is
// lifted only when an element is read.)
TEST_F(Cases, WalkFromRunToRunWithTheRecordAlone) {
    for (const Case& c : cases) {
        if (Fails(c)) continue;
        const XmlNode element = c.Element();
        element.SetAttribute("LastActionDateTime", GeneralDateText(c.from));
        ScheduleRecord record;
        GetNextTime(record, element, c.now);
        for (const std::string& expected : c.Expected()) {
            EXPECT_EQ(GeneralDateText(record.NextActionDateTime), expected) << c.name;
            if (record.NextActionDateTime < c.now) break;
            GetNextTime(record, c.now);
        }
    }
}

}  // namespace
}  // namespace norvelis
