#include "tools/gnuplot/gnuplot.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <locale>
#include <nlohmann/json.hpp>
#include <sstream>
#include <system_error>

#include "host/output/descriptor.h"
#include "host/output/errors.h"
#include "host/output/one_line.h"

namespace se_output {
namespace {

constexpr const char* kPng = ".png";
constexpr const char* kSvg = ".svg";
constexpr const char* kPngOnWhite = "pngcairo background '#ffffff'";
constexpr const char* kSvgOnWhite = "svg background '#ffffff'";

[[noreturn]] void cannotDraw(const std::string& what, const std::string& why) {
    throw Failure("cannot draw '" + what + "': " + why);
}

std::string endingOf(const std::string& path) {
    std::string ending = std::filesystem::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (ending == kPng || ending == kSvg) return ending;
    throw UsageError("no picture format for the name '" + path + "'; give it a name in .png or .svg");
}

// Runs gnuplot with these as its standard input, output and error.
// result: its exit code, or -1 when a signal ended it. fails: Failure when it cannot be started.
int runGnuplot(std::vector<std::string> words, int in, int out, int err) {
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_adddup2(&files, in, STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&files, out, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&files, err, STDERR_FILENO);
    pid_t child = 0;
    const int error = ::posix_spawnp(&child, argv[0], &files, nullptr, argv.data(), ::environ);
    ::posix_spawn_file_actions_destroy(&files);
    if (error == ENOENT) throw Failure("pictures need gnuplot; install the package gnuplot-nox");
    if (error != 0) throw Failure(std::string("gnuplot cannot be started: ") + std::strerror(error));

    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void requireGnuplot() {
    const Descriptor null(::open("/dev/null", O_RDWR | O_CLOEXEC));
    if (runGnuplot({"gnuplot", "--version"}, null.number(), null.number(), null.number()) != 0) {
        throw Failure("gnuplot does not work; install the package gnuplot-nox again");
    }
}

std::string preamble(const std::string& terminal, const PictureSize& size) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << "set encoding utf8\nset terminal " << terminal << " size " << size.width << "," << size.height
         << " noenhanced font 'DejaVu Sans,11'\n";
    return text.str();
}

// gnuplot's message, without the arrow that points into the script.
std::string complaint(const std::string& said) {
    std::istringstream lines(said);
    std::string line;
    std::string last = "gnuplot failed without a message";
    while (std::getline(lines, line)) {
        if (!oneLine(line).empty()) last = "gnuplot says " + oneLine(line);
    }
    return last;
}

// gnuplot does not detect a full disk.
bool isComplete(const std::string& content, const std::string& ending) {
    const std::string mark = ending == kPng ? "IEND" : "</svg>";
    const size_t place = content.rfind(mark);
    return place != std::string::npos && content.size() - place <= mark.size() + 8;
}

// The picture `what` into this file.
void drawInto(int descriptor, const std::string& what, const std::string& script,
              const std::string& ending) try {
    const Descriptor input = fileInMemory();
    writeAll(input.number(), script + "\n");
    ::lseek(input.number(), 0, SEEK_SET);
    const Descriptor said = fileInMemory();

    // -d: without the user's own start-up file.
    const int exit_code = runGnuplot({"gnuplot", "-d"}, input.number(), descriptor, said.number());
    if (exit_code != 0) cannotDraw(what, complaint(contentOf(said.number())));
    if (!isComplete(contentOf(descriptor), ending)) cannotDraw(what, "it did not fit; is there space left?");
} catch (const std::system_error& error) {
    cannotDraw(what, std::strerror(error.code().value()));
}

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

void eraseElements(std::string& svg, const std::string& tag) {
    const std::string end = "</" + tag + ">";
    for (size_t at = svg.find("<" + tag + ">"); at != std::string::npos; at = svg.find("<" + tag + ">", at)) {
        svg.erase(at, svg.find(end, at) + end.size() - at);
    }
}

}  // namespace

Picture::Picture(const std::string& path) : ending_(endingOf(path)), file_((requireGnuplot(), path)) {}

void Picture::draw(const std::string& script, PictureSize size) {
    drawInto(file_.descriptor(), path(), preamble(ending_ == kPng ? kPngOnWhite : kSvgOnWhite, size) + script,
             ending_);
}

std::string pngBytes(const std::string& name, const std::string& script, PictureSize size) {
    const Descriptor file = fileInMemory();
    drawInto(file.number(), name, preamble(kPngOnWhite, size) + script, kPng);
    return contentOf(file.number());
}

std::string svgElement(const std::string& name, const std::string& script, PictureSize size) {
    const Descriptor file = fileInMemory();
    drawInto(file.number(), name, preamble("svg dynamic", size) + script, kSvg);
    std::string svg = contentOf(file.number());
    svg.erase(0, svg.find("<svg"));
    svg.erase(svg.rfind("</svg>") + 6);
    // They would be tooltips.
    eraseElements(svg, "title");
    eraseElements(svg, "desc");
    // In a page the namespaces are known.
    replaceAll(svg, " xmlns=\"http://www.w3.org/2000/svg\"", "");
    replaceAll(svg, " xmlns:xlink=\"http://www.w3.org/1999/xlink\"", "");
    replaceAll(svg, "xlink:href", "href");
    for (const char* const before : {" id=\"", " id='", "href=\"#", "href='#", "url(#"}) {
        replaceAll(svg, before, before + name + "-");
    }
    return svg;
}

std::string plotText(const std::string& text) {
    // No program opens a picture with bytes that are not UTF-8.
    using Json = nlohmann::json;
    const std::string safe =
        Json::parse(Json(oneLine(text)).dump(-1, ' ', false, Json::error_handler_t::replace))
            .get<std::string>();
    std::string quoted = "'";
    for (const char c : safe) {
        if (c == '\'') quoted += c;
        quoted += c;
    }
    return quoted + "'";
}

std::string fileName(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

std::string plotData(const std::string& name, const std::vector<std::vector<double>>& rows) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << "$" << name << " << END_OF_DATA\n";
    for (const std::vector<double>& row : rows) {
        const char* separator = "";
        for (const double value : row) {
            text << separator;
            if (std::isfinite(value)) {
                text << value;
            } else {
                text << "NaN";
            }
            separator = " ";
        }
        text << "\n";
    }
    text << "END_OF_DATA\n";
    return text.str();
}

}  // namespace se_output
