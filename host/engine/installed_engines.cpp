#include "host/engine/installed_engines.h"

#include <dlfcn.h>

#include <filesystem>
#include <new>
#include <system_error>

#include "common/file.h"
#include "host/output/errors.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace fs = std::filesystem;

// libse_wrapper is a shared library in every program; this file may be a part of the program itself.
fs::path folderOfTheWrapper() {
    Dl_info info{};
    const auto* const function = reinterpret_cast<const void*>(&quill::media::se_wrapper::engineFolder);
    const std::string name = ::dladdr(function, &info) != 0 ? info.dli_fname : "";
    std::error_code error;
    const fs::path library = fs::canonical(name, error);
    if (error == std::errc::not_enough_memory) throw std::bad_alloc();
    if (error)
        throw se_output::Failure("the folder of libse_wrapper (" + name +
                                 ") cannot be found: " + error.message());
    return library.parent_path();
}

bool isFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

}  // namespace

std::string defaultEngineFolder() {
    const fs::path own = quill::File::joinPath(quill::getExePath(), "selibs");
    if (isFolder(own)) return own;
    const fs::path installed = folderOfTheWrapper() / "libse_wrapper/selibs";
    if (isFolder(installed)) return installed;
    throw se_output::Failure("there are no engine builds: neither '" + own.string() + "' nor '" +
                             installed.string() + "' is a folder; put a build into one of them");
}

}  // namespace se_host
