#include "tools/se_host/sweep_report/listening.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "host/output/descriptor.h"
#include "host/output/errors.h"
#include "host/output/one_line.h"
#include "tools/se_host/sound/recording.h"

namespace se_host::report {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using se_output::Descriptor;
using se_output::Failure;

constexpr const char* kProgram = "/proc/self/exe";

// Empty when it is something else.
Json objectOf(const std::string& text) {
    const Json json = Json::parse(text, nullptr, false);
    return json.is_object() ? json : Json::object();
}

std::string contentOfFile(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string textIn(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found != object.end() && found->is_string() ? found->get<std::string>() : "";
}

// For a POSIX shell.
std::string quoted(const std::string& word) {
    constexpr const char* kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./=,:+@%";
    if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
    std::string text = "'";
    for (const char c : word) text += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return text + "'";
}

// Runs this program; its standard output goes to `out`. fails: Failure with its message.
void runSelf(const std::vector<std::string>& arguments, int out) {
    std::vector<std::string> words{"se_host"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);

    const Descriptor said = se_output::fileInMemory();
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&files, out, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&files, said.number(), STDERR_FILENO);
    pid_t child = 0;
    const int error = ::posix_spawn(&child, kProgram, &files, nullptr, argv.data(), ::environ);
    ::posix_spawn_file_actions_destroy(&files);
    if (error != 0) throw Failure(std::string("cannot start se_host: ") + std::strerror(error));
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return;
    throw Failure(se_output::oneLine(se_output::contentOf(said.number())));
}

}  // namespace

Listening::Listening(const std::string& folder, const Results& results)
    : folder_(fs::absolute(folder).lexically_normal().string()) {
    std::ifstream manifest(placeOf("manifest.jsonl"));
    for (std::string line; std::getline(manifest, line);) {
        const Json entry = objectOf(line);
        const std::string id = textIn(entry, "id");
        if (!id.empty() && !textIn(entry, "recording").empty()) entries_[id] = entry;
    }
    for (const std::string& tuning : results.tunings) {
        const std::string file = placeOf("tunings/" + tuning + ".json");
        if (fs::exists(file)) tunings_[tuning] = file;
    }
    engine_ = {"--engine", results.build};
    const Json plan = objectOf(contentOfFile(placeOf("plan.json")));
    const Json engine = plan.value("engine", Json::object());
    if (const std::string array = textIn(engine, "array"); !array.empty()) {
        engine_.insert(engine_.end(), {"--array", array});
    }
    for (const Json& tuning : plan.value("tunings", Json::array())) {
        if (const std::string file = textIn(tuning, "file"); !file.empty()) {
            tunings_[textIn(tuning, "name")] = placeOf(file);
        }
    }
}

// Paths of the folder's files start there.
std::string Listening::placeOf(const std::string& path) const {
    return (fs::path(folder_) / path).lexically_normal().string();
}

std::vector<std::string> Listening::arguments(const std::string& recording, const std::string& tuning,
                                              const std::string& output) const {
    const Json& entry = entries_.at(recording);
    std::vector<std::string> words{"process", placeOf(textIn(entry, "recording")), output};
    const Json far_end = entry.value("far_end", Json(nullptr));
    if (far_end.is_number_integer()) words.insert(words.end(), {"--far-end-channel", far_end.dump()});
    if (far_end.is_string()) words.insert(words.end(), {"--far-end", placeOf(far_end)});
    if (const std::string map = textIn(entry, "channel_map"); !map.empty()) {
        words.insert(words.end(), {"--channel-map", map});
    }
    if (const auto file = tunings_.find(tuning); file != tunings_.end()) {
        words.insert(words.end(), {"--tuning", file->second});
    }
    words.insert(words.end(), engine_.begin(), engine_.end());
    words.push_back("--quiet");
    return words;
}

std::string Listening::command(const std::string& recording, const std::string& tuning) const {
    std::string text = "se_host";
    for (const std::string& word : arguments(recording, tuning, "-")) text += " " + quoted(word);
    return text + " | aplay";
}

std::vector<int16_t> Listening::microphone(const std::string& recording) const {
    const Json& entry = entries_.at(recording);
    RecordingOptions options;
    options.input = placeOf(textIn(entry, "recording"));
    options.channel_map = textIn(entry, "channel_map");
    const Recording read = readRecording(options);
    std::vector<int16_t> samples = channelOf(read.microphones, kCentreMicrophone);
    samples.resize(read.frames);
    return samples;
}

std::vector<int16_t> Listening::output(const std::string& recording, const std::string& tuning) const {
    const Descriptor file = se_output::fileInMemory();
    runSelf(arguments(recording, tuning, "-"), file.number());
    return readAudioFile(se_output::pathOf(file.number())).samples;
}

}  // namespace se_host::report
