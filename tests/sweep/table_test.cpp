// Rows as lines of CSV.
#include "tools/se_host/sweep/table.h"

#include <gtest/gtest.h>

#include "tools/se_host/measures/measures.h"

namespace se_host::sweep {
namespace {

TEST(Csv, QuotesWhatNeedsIt) {
    EXPECT_EQ(csvLine({"plain", "a,b", "say \"x\"", "two\nlines"}),
              "plain,\"a,b\",\"say \"\"x\"\"\",\"two\nlines\"\n");
}

TEST(Csv, HasNumbersWithTheFewestDigitsAndNothingForNull) {
    EXPECT_EQ(csvLine({0.1, -23.7277, 3, nullptr, true, 1e-7}), "0.1,-23.7277,3,,true,1e-07\n");
}

TEST(Table, HasACellForEachColumn) {
    const Table table({"car"});
    Json measured = Json::object();
    for (const Measure& measure : measures()) measured[measure.name] = 1.5;
    const Json row{{"key", "k"},
                   {"recording", "r"},
                   {"tuning", "t"},
                   {"labels", {{"car", "fast"}}},
                   {"status", "ok"},
                   {"error", nullptr},
                   {"measures", measured},
                   {"output", "o"},
                   {"engine", {{"build", "b"}, {"version", "v"}, {"file", "f"}}},
                   {"program", {{"version", "p"}, {"files", "h"}}},
                   {"processor", {"avx", "fma"}}};
    const std::vector<Json> cells = table.cells(row);
    ASSERT_EQ(cells.size(), table.columns().size());
    EXPECT_EQ(csvLine(cells).substr(0, 18), "r,t,fast,ok,,1.5,1");
    const std::string end = csvLine(cells);
    EXPECT_EQ(end.substr(end.rfind("1.5,")), "1.5,o,b,v,f,p,h,avx fma,k\n");
}

TEST(Table, OfAFailedRowHasEmptyCells) {
    const Table table({});
    const Json row{{"key", "k"},
                   {"recording", "r"},
                   {"tuning", "t"},
                   {"labels", Json::object()},
                   {"status", "failed"},
                   {"error", "why"},
                   {"measures", nullptr},
                   {"output", nullptr},
                   {"engine", {{"build", "b"}, {"version", "v"}, {"file", "f"}}},
                   {"program", {{"version", "p"}, {"files", "h"}}},
                   {"processor", Json::array()}};
    const std::vector<Json> cells = table.cells(row);
    ASSERT_EQ(cells.size(), table.columns().size());
    EXPECT_EQ(cells[3], "why");
    EXPECT_TRUE(cells[4].is_null());
}

}  // namespace
}  // namespace se_host::sweep
