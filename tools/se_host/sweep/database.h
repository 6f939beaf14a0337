// The results as an SQLite file: a table "results" with the columns of Table, and "measures", which explains them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tools/se_host/sweep/json_lines.h"

struct sqlite3;
struct sqlite3_stmt;

namespace se_host::sweep {

// In memory until its bytes are taken. The same rows in the same order give the same bytes.
// fails, all: Failure.
class Database {
  public:
    explicit Database(const std::vector<std::string>& columns);
    void add(const std::vector<Json>& cells);
    // needs: called once, last.
    std::string bytes();

  private:
    struct Close {
        void operator()(sqlite3* database) const;
        void operator()(sqlite3_stmt* statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Close>;

    void execute(const std::string& sql);
    Statement prepare(const std::string& sql);
    void insert(sqlite3_stmt* statement, const std::vector<Json>& cells);
    void require(bool done);

    std::unique_ptr<sqlite3, Close> database_;
    Statement insertion_;
};

}  // namespace se_host::sweep
