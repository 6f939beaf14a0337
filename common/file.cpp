#include "common/file.h"

#include <unistd.h>

#include <vector>

namespace quill {

std::string getExePath() {
    std::vector<char> path(256);
    for (;;) {
        const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
        if (length < 0) return {};
        if (static_cast<size_t>(length) < path.size()) {
            return File::directoryOf(std::string(path.data(), static_cast<size_t>(length)));
        }
        path.resize(path.size() * 2);  // a full buffer may hold a cut path
    }
}

std::string File::directoryOf(const std::string& path) {
    const size_t separator = path.rfind('/');
    if (separator == std::string::npos) return {};
    return separator == 0 ? "/" : path.substr(0, separator);
}

std::string File::joinPath(const std::string& a, const std::string& b) {
    const size_t end = a.find_last_not_of('/');
    const size_t begin = b.find_first_not_of('/');
    std::string path = end == std::string::npos ? std::string() : a.substr(0, end + 1);
    path += '/';
    if (begin != std::string::npos) path += b.substr(begin);
    return path;
}

}  // namespace quill
