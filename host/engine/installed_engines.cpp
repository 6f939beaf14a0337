#include "host/engine/installed_engines.h"

#include <dlfcn.h>

#include <filesystem>

#include "common/file.h"

namespace se_host {
namespace {

namespace fs = std::filesystem;

// From the folder of the library: of a package, of an installation with and without a folder for the machine's type, and of
// the build tree.
constexpr const char* kPlaces[] = {"libse_wrapper/selibs", "../bin/selibs", "../../bin/selibs"};

fs::path folderOfThisLibrary() {
    static const char here = 0;
    Dl_info info{};
    if (::dladdr(&here, &info) == 0 || info.dli_fname == nullptr) return {};
    std::error_code error;
    return fs::canonical(info.dli_fname, error).parent_path();
}

bool isFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

}  // namespace

std::string defaultEngineFolder() {
    if (isFolder(quill::File::joinPath(quill::getExePath(), "selibs"))) return {};
    const fs::path library = folderOfThisLibrary();
    for (const char* const place : kPlaces) {
        if (isFolder(library / place)) return (library / place).lexically_normal().string();
    }
    return {};
}

}  // namespace se_host
