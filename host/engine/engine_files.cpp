#include "host/engine/engine_files.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <system_error>

#include "common/file.h"
#include "host/output/errors.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace fs = std::filesystem;
namespace se = quill::media::se_wrapper;

std::string choices() {
    const std::vector<std::string> names = engineNames();
    if (names.empty()) return "the folder '" + se::engineFolder() + "' holds no engine; install one there";
    return "choose one of: " + quill::join(names.begin(), names.end(), ", ");
}

}  // namespace

std::vector<std::string> engineNames() {
    std::vector<std::string> names;
    std::error_code error;
    const fs::directory_iterator folder(se::engineFolder(), error);
    if (error == std::errc::not_enough_memory) throw std::bad_alloc();
    for (const fs::directory_entry& entry : folder) {
        if (entry.is_regular_file(error)) names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

quill::DynLibHandle openEngineFile(const std::string& name) {
    const std::string path = quill::File::joinPath(se::engineFolder(), name);
    std::error_code error;
    if (!fs::exists(path, error))
        throw se_output::UsageError("no engine '" + name + "' (" + path + "); " + choices());
    std::string reason;
    if (const quill::DynLibHandle engine = quill::loadPermanentLibrary(path, &reason)) return engine;
    throw se_output::Failure("engine '" + name + "' cannot be loaded (" + reason + "); " + choices());
}

}  // namespace se_host
