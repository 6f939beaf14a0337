#include "bench/routines_vs_libraries/report.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "bench/routines_vs_libraries/areas.h"

namespace routines_vs_libraries {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kRoles[] = {"ours", "peer", "plain", "limit"};

struct Table {
    std::string title;
    std::vector<std::vector<std::string>> rows;  // a heading first; of equal lengths
};

using Cell = std::string (*)(const Result&, const std::vector<Result>& all);

std::string number(double value, int decimals) {
    char text[32];
    std::snprintf(text, sizeof(text), "%.*f", decimals, value);
    return text;
}

// A result's time divided by that of whom it stands beside; 0 when there is none.
double timesBeside(const Result& r, const std::vector<Result>& all) {
    for (const Result& other : all) {
        if (other.subject == r.subject && other.value == r.value && other.name == r.beside) {
            return r.cycles / other.cycles;
        }
    }
    return 0;
}

std::string amount(const Result& r, const std::vector<Result>& all) {
    const double value = r.amount(), ratio = timesBeside(r, all);
    const std::string text = number(value, value < 10 ? 2 : value < 100 ? 1 : 0);
    return ratio > 0 ? text + " (" + number(ratio, 2) + ")" : text;
}

std::string allocations(const Result& r, const std::vector<Result>&) {
    return number(r.allocations, 2);
}

template <class T, class Of>
std::vector<T> distinct(const std::vector<Result>& results, Of of) {
    std::vector<T> all;
    for (const Result& r : results) {
        if (std::find(all.begin(), all.end(), of(r)) == all.end()) all.push_back(of(r));
    }
    return all;
}

std::vector<Result> only(const std::vector<Result>& results, const std::string Result::*field,
                         const std::string& value) {
    std::vector<Result> some;
    std::copy_if(results.begin(), results.end(), std::back_inserter(some),
                 [&](const Result& r) { return r.*field == value; });
    return some;
}

// The fewest cycles of a role in a column; 0 when it does not take part.
double fastest(const std::vector<Result>& results, Role role, int value) {
    double cycles = 0;
    for (const Result& r : results) {
        if (r.role != role || r.value != value) continue;
        if (cycles <= 0 || r.cycles < cycles) cycles = r.cycles;
    }
    return cycles;
}

std::vector<std::string> comparison(const std::vector<Result>& results, const std::vector<int>& values) {
    std::vector<std::string> row = {"our fastest: times as fast as the fastest peer"};
    for (const int value : values) {
        const double ours = fastest(results, Role::ours, value), peer = fastest(results, Role::peer, value);
        row.push_back(ours > 0 && peer > 0 ? number(peer / ours, 2) : "");
    }
    const bool is_empty =
        std::all_of(row.begin() + 1, row.end(), [](const auto& cell) { return cell.empty(); });
    return is_empty ? std::vector<std::string>() : row;
}

std::vector<std::string> rowOf(const std::vector<Result>& results, const std::string& name,
                               const std::vector<int>& values, Cell cell) {
    std::vector<std::string> row = {name};
    for (const int value : values) {
        const auto found = std::find_if(results.begin(), results.end(),
                                        [&](const Result& r) { return r.name == name && r.value == value; });
        row.push_back(found == results.end() ? "" : cell(*found, results));
    }
    return row;
}

// `results` are those of one subject.
Table tableOf(const std::vector<Result>& results, const std::string& what, Cell cell) {
    const auto values = distinct<int>(results, [](const Result& r) { return r.value; });
    Table table{results.front().subject + ": " + what, {{results.front().parameter}}};
    for (const int value : values) table.rows.front().push_back(std::to_string(value));
    for (const std::string& name : distinct<std::string>(results, [](const Result& r) { return r.name; })) {
        table.rows.push_back(rowOf(results, name, values, cell));
    }
    return table;
}

std::vector<Table> tablesOf(const std::vector<Result>& area) {
    std::vector<Table> tables;
    for (const std::string& subject :
         distinct<std::string>(area, [](const Result& r) { return r.subject; })) {
        const std::vector<Result> results = only(area, &Result::subject, subject);
        const Result& first = results.front();
        const std::string beside = first.beside.empty() ? "" : " (in brackets: times " + first.beside + ")";
        Table table = tableOf(results, std::string(first.figure.unit) + beside, amount);
        const auto values = distinct<int>(results, [](const Result& r) { return r.value; });
        if (auto row = comparison(results, values); !row.empty()) table.rows.push_back(std::move(row));
        tables.push_back(std::move(table));
        if (first.allocations >= 0) {
            tables.push_back(tableOf(results, "allocations", allocations));
        }
    }
    return tables;
}

std::vector<size_t> widths(const Table& table) {
    std::vector<size_t> all(table.rows.front().size());
    for (const auto& row : table.rows) {
        for (size_t i = 0; i < row.size(); ++i) all[i] = std::max(all[i], row[i].size());
    }
    return all;
}

std::string padded(const std::string& cell, size_t width, bool left) {
    const std::string blanks(width - cell.size(), ' ');
    return left ? cell + blanks : blanks + cell;
}

std::string plainTable(const Table& table) {
    const std::vector<size_t> width = widths(table);
    std::string text = table.title + "\n";
    for (const auto& row : table.rows) {
        std::string line = " ";
        for (size_t i = 0; i < row.size(); ++i) line += " " + padded(row[i], width[i] + (i > 0), i == 0);
        text += line + "\n";
    }
    return text + "\n";
}

std::string markdownTable(const Table& table) {
    std::string text = table.title + "\n\n";
    for (size_t r = 0; r < table.rows.size(); ++r) {
        text += "|";
        for (const std::string& cell : table.rows[r]) text += " " + cell + " |";
        text += "\n";
        if (r > 0) continue;
        text += "|---|";
        for (size_t i = 1; i < table.rows[r].size(); ++i) text += "--:|";
        text += "\n";
    }
    return text + "\n";
}

std::string join(const Names& names, const char* between, const char* end) {
    std::string text;
    for (const auto& [name, value] : names) text += name + between + value + end;
    return text;
}

std::string tables(const Findings& findings, const char* heading, std::string (*print)(const Table&)) {
    std::string text;
    for (const Area& area : kAreas) {
        const std::vector<Result> results = only(findings.results, &Result::area, area.name);
        if (results.empty()) continue;
        text += std::string(heading) + area.subject + "\n\n";
        for (const Table& table : tablesOf(results)) text += print(table);
    }
    return text;
}

Json objectOf(const Names& names) {
    Json object = Json::object();
    for (const auto& [name, value] : names) object[name] = value;
    return object;
}

}  // namespace

std::string textOf(const Findings& findings) {
    return join(findings.environment, ": ", "\n") + join(findings.libraries, " ", "\n") + "\n" +
           tables(findings, "== ", plainTable);
}

std::string markdownOf(const Findings& findings) {
    std::string peers = join(findings.libraries, " ", "; ");
    if (peers.size() > 2) peers.resize(peers.size() - 2);
    return join(findings.environment, ": ", "\\\n") + "peers: " + peers + "\n\n" +
           tables(findings, "### ", markdownTable);
}

std::string jsonOf(const Findings& findings) {
    Json document = {{"environment", objectOf(findings.environment)},
                     {"libraries", objectOf(findings.libraries)},
                     {"results", Json::array()}};
    for (const Result& r : findings.results) {
        Json entry = {{"area", r.area},
                      {"subject", r.subject},
                      {r.parameter, r.value},
                      {"name", r.name},
                      {"role", kRoles[static_cast<int>(r.role)]},
                      {"cycles", r.cycles},
                      {"nanoseconds", r.nanoseconds},
                      {"work", r.work},
                      {r.figure.unit, r.amount()}};
        if (const double ratio = timesBeside(r, findings.results); ratio > 0) entry["times_beside"] = ratio;
        if (r.allocations >= 0) entry["allocations"] = r.allocations;
        document["results"].push_back(std::move(entry));
    }
    return document.dump(2) + "\n";
}

}  // namespace routines_vs_libraries
