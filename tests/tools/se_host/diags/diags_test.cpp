#include "tests/tools/se_host/diags/diags_test.h"

#include <fstream>
#include <sstream>

namespace se_host_test {

using Json = nlohmann::ordered_json;

HostRun DiagsTest::diags(Words words) const {
    words.insert(words.begin(), "diags");
    return run(words);
}

std::string DiagsTest::printed(const Words& words) const {
    const HostRun result = diags(words);
    expectDone(result);
    return result.out;
}

Json DiagsTest::printedJson(const Words& words) const {
    return Json::parse(printed(words));
}

void DiagsTest::makeRecording(size_t blocks) const {
    writeSound(path("in.wav"), patternedSound(160 * blocks));
}

void DiagsTest::dump(const std::string& name, const Words& more) const {
    Words words{"dump", path(name)};
    words.insert(words.end(), more.begin(), more.end());
    expectDone(diags(words));
}

std::string DiagsTest::readText(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(path(name)).rdbuf();
    return text.str();
}

Json DiagsTest::readJson(const std::string& name) const {
    return Json::parse(readText(name));
}

void DiagsTest::writeJson(const std::string& name, const Json& json) const {
    writeText(name, json.dump());
}

void DiagsTest::writeTuning(const std::string& name, const Json& values) const {
    dump(name);
    Json tuning = readJson(name);
    for (const auto& [diagnostic, value] : values.items()) {
        tuning["diagnostics"][diagnostic]["value"] = value;
    }
    writeJson(name, tuning);
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

}  // namespace se_host_test
