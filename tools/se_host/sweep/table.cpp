#include "tools/se_host/sweep/table.h"

#include "tools/se_host/measures/measures.h"

namespace se_host::sweep {
namespace {

std::string joined(const Json& texts) {
    std::string all;
    for (const Json& text : texts) all += (all.empty() ? "" : " ") + text.get<std::string>();
    return all;
}

Json member(const Json& object, const std::string& name) {
    return object.is_object() && object.contains(name) ? object[name] : Json(nullptr);
}

// Quoted where it has to be.
std::string csvText(const Json& cell) {
    if (cell.is_null()) return {};
    if (!cell.is_string()) return cell.dump();
    std::string text = cell.get<std::string>();
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

}  // namespace

Table::Table(std::vector<std::string> labels) : labels_(std::move(labels)) {
    columns_ = {"recording", "tuning"};
    for (const std::string& label : labels_) columns_.push_back("label_" + label);
    columns_.insert(columns_.end(), {"status", "error"});
    for (const Measure& measure : measures()) columns_.emplace_back(measure.name);
    columns_.insert(columns_.end(), {"output", "engine_build", "engine_version", "engine_file",
                                     "program_version", "program_files", "processor", "key"});
}

std::vector<Json> Table::cells(const Json& row) const {
    std::vector<Json> cells{row.at("recording"), row.at("tuning")};
    for (const std::string& label : labels_) cells.push_back(member(row.at("labels"), label));
    cells.push_back(row.at("status"));
    cells.push_back(row.at("error"));
    for (const Measure& measure : measures()) cells.push_back(member(row.at("measures"), measure.name));
    const Json& engine = row.at("engine");
    const Json& program = row.at("program");
    cells.insert(cells.end(),
                 {row.at("output"), engine.at("build"), engine.at("version"), engine.at("file"),
                  program.at("version"), program.at("files"), joined(row.at("processor")), row.at("key")});
    return cells;
}

std::string csvLine(const std::vector<Json>& cells) {
    std::string line;
    for (const Json& cell : cells) line += (&cell == cells.data() ? "" : ",") + csvText(cell);
    return line + "\n";
}

}  // namespace se_host::sweep
