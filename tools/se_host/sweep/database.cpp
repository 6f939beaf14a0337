#include "tools/se_host/sweep/database.h"

#include <sqlite3.h>

#include "host/output/errors.h"
#include "tools/se_host/measures/measures.h"

namespace se_host::sweep {
namespace {

std::string quoted(const std::string& name) {
    std::string text = "\"";
    for (const char c : name) text += c == '"' ? std::string("\"\"") : std::string(1, c);
    return text + "\"";
}

std::string list(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) all += (all.empty() ? "" : ", ") + text;
    return all;
}

int bind(sqlite3_stmt* statement, int place, const Json& cell) {
    if (cell.is_boolean()) return sqlite3_bind_int(statement, place, cell.get<bool>() ? 1 : 0);
    if (cell.is_number_float()) return sqlite3_bind_double(statement, place, cell.get<double>());
    if (cell.is_number()) return sqlite3_bind_int64(statement, place, cell.get<int64_t>());
    if (!cell.is_string()) return sqlite3_bind_null(statement, place);
    const std::string text = cell.get<std::string>();
    return sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

const char* betterText(Better better) {
    return better == Better::kMore ? "more" : better == Better::kLess ? "less" : "neither";
}

}  // namespace

void Database::Close::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

void Database::Close::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

Database::Database(const std::vector<std::string>& columns) {
    sqlite3* opened = nullptr;
    const int answer = sqlite3_open(":memory:", &opened);
    database_.reset(opened);
    require(answer == SQLITE_OK);
    execute("PRAGMA page_size = 4096");
    execute("BEGIN");
    execute("CREATE TABLE measures (name TEXT PRIMARY KEY, unit TEXT, title TEXT, better TEXT)");
    const Statement measure = prepare("INSERT INTO measures VALUES (?, ?, ?, ?)");
    for (const Measure& one : measures()) {
        insert(measure.get(), {one.name, one.unit, one.title, betterText(one.better)});
    }
    std::vector<std::string> names, places;
    for (const std::string& column : columns) {
        names.push_back(quoted(column));
        places.emplace_back("?");
    }
    execute("CREATE TABLE results (" + list(names) + ", PRIMARY KEY (recording, tuning))");
    insertion_ = prepare("INSERT INTO results VALUES (" + list(places) + ")");
}

void Database::add(const std::vector<Json>& cells) {
    insert(insertion_.get(), cells);
}

std::string Database::bytes() {
    insertion_.reset();
    execute("COMMIT");
    execute("VACUUM");
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> content(
        sqlite3_serialize(database_.get(), "main", &size, 0), sqlite3_free);
    require(content != nullptr);
    return std::string(reinterpret_cast<const char*>(content.get()), static_cast<size_t>(size));
}

void Database::execute(const std::string& sql) {
    require(sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
}

Database::Statement Database::prepare(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    require(sqlite3_prepare_v2(database_.get(), sql.c_str(), -1, &statement, nullptr) == SQLITE_OK);
    return Statement(statement);
}

void Database::insert(sqlite3_stmt* statement, const std::vector<Json>& cells) {
    for (size_t i = 0; i < cells.size(); ++i) {
        require(bind(statement, static_cast<int>(i + 1), cells[i]) == SQLITE_OK);
    }
    require(sqlite3_step(statement) == SQLITE_DONE);
    require(sqlite3_reset(statement) == SQLITE_OK);
}

void Database::require(bool done) {
    if (!done)
        throw se_output::Failure(std::string("cannot make the database: ") + sqlite3_errmsg(database_.get()));
}

}  // namespace se_host::sweep
