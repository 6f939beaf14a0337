#include "tools/se_host/sweep/found_recordings.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>

#include "host/output/errors.h"
#include "tools/se_host/sound/scene_parts.h"

namespace se_host::sweep {
namespace {

namespace fs = std::filesystem;
using se_output::Failure;

bool isSound(const fs::path& path) {
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ".wav" || extension == ".flac";
}

std::string withoutExtension(const fs::path& path) {
    return fs::path(path).replace_extension().string();
}

// By their path without extension.
std::map<std::string, std::string> soundsBelow(const std::string& folder) {
    std::map<std::string, std::string> sounds;
    try {
        const auto options = fs::directory_options::follow_directory_symlink;
        for (const fs::directory_entry& file : fs::recursive_directory_iterator(folder, options)) {
            if (!file.is_regular_file() || !isSound(file.path())) continue;
            const auto [place, is_new] = sounds.emplace(withoutExtension(file.path()), file.path().string());
            if (!is_new) {
                throw Failure("'" + place->second + "' and '" + file.path().string() +
                              "' would have one id; rename one of them");
            }
        }
    } catch (const fs::filesystem_error& error) {
        throw Failure("cannot read the folder '" + folder + "': " + error.code().message());
    }
    return sounds;
}

bool isPartOf(const std::string& name, const std::map<std::string, std::string>& sounds,
              const std::vector<std::string>& suffixes) {
    return std::any_of(suffixes.begin(), suffixes.end(), [&](const std::string& suffix) {
        const size_t size = name.size() - std::min(suffix.size(), name.size());
        return name.substr(size) == suffix && sounds.count(name.substr(0, size)) != 0;
    });
}

bool hasParts(const std::string& name) {
    const std::vector<std::string> parts = scenePartPaths(name);
    return std::all_of(parts.begin(), parts.end(), [](const std::string& part) { return fs::exists(part); });
}

}  // namespace

std::vector<Entry> recordingsBelow(const std::string& folder, const FarEndChoice& far_end) {
    const std::string root = fs::absolute(folder).lexically_normal().string();
    const auto sounds = soundsBelow(root);
    const std::vector<std::string> suffixes{far_end.suffix, "-talker", "-noise", "-echo"};
    std::vector<Entry> entries;
    for (const auto& [name, file] : sounds) {
        if (isPartOf(name, sounds, suffixes)) continue;
        Entry entry;
        const fs::path id = fs::path(name).lexically_relative(root);
        entry.id = id.string();
        entry.recording.input = file;
        entry.recording.far_end_channel = far_end.channel;
        const auto played = sounds.find(name + far_end.suffix);
        if (!far_end.channel && played != sounds.end()) entry.recording.far_end_file = played->second;
        if (hasParts(name)) entry.parts = name;
        if (id.has_parent_path()) entry.labels["scenario"] = id.parent_path().string();
        entries.push_back(entry);
    }
    if (entries.empty())
        throw Failure("there is no WAV or FLAC file below '" + folder + "'; give another folder");
    return entries;
}

namespace {

// Calls `visit` with id and path of each line.
template <class Visit>
void visitList(const std::string& list, Visit visit) {
    constexpr const char* kBlanks = " \t\r";
    visitLines(list, textOf(list), [&](std::string_view line) {
        line.remove_prefix(line.find_first_not_of(kBlanks));
        line = line.substr(0, line.find_last_not_of(kBlanks) + 1);
        const size_t end = line.find_first_of(kBlanks);
        if (end == std::string_view::npos) throw Failure("a line is an id, a blank and a path");
        const std::string id(line.substr(0, end));
        const std::string path(line.substr(line.find_first_not_of(kBlanks, end)));
        if (path.back() == '|') {
            throw Failure("'" + id + "' is a command; write its sound to a file, and name that file");
        }
        visit(id, fs::absolute(path).lexically_normal().string());
    });
}

}  // namespace

std::vector<Entry> recordingsOfList(const std::string& list, const std::string& far_end_list,
                                    const FarEndChoice& far_end) {
    std::vector<Entry> entries;
    std::map<std::string, size_t> places;
    visitList(list, [&](const std::string& id, const std::string& path) {
        if (!places.emplace(id, entries.size()).second) throw Failure("the id '" + id + "' is used twice");
        Entry entry;
        entry.id = id;
        entry.recording.input = path;
        entry.recording.far_end_channel = far_end.channel;
        entries.push_back(entry);
    });
    if (entries.empty()) throw Failure("'" + list + "' names no recording");
    if (far_end_list.empty()) return entries;
    visitList(far_end_list, [&](const std::string& id, const std::string& path) {
        const auto place = places.find(id);
        if (place == places.end()) throw Failure("'" + list + "' has no recording '" + id + "'");
        entries[place->second].recording.far_end_file = path;
    });
    for (const Entry& entry : entries) {
        if (entry.recording.far_end_file.empty()) {
            throw Failure("'" + far_end_list + "' has no far end for '" + entry.id + "'");
        }
    }
    return entries;
}

}  // namespace se_host::sweep
