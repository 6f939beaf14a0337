#include "tools/se_host/sweep/program.h"

#include <link.h>

#include <map>

#include "tools/se_host/sweep/hash.h"

namespace se_host::sweep {
namespace {

constexpr const char* kLibraries[] = {"libcommon.so", "libse_wrapper.so"};

using Paths = std::map<std::string, std::string>;  // by library

int addLibrary(dl_phdr_info* object, size_t, void* paths) {
    const std::string path = object->dlpi_name;
    const std::string name = path.substr(path.rfind('/') + 1);
    for (const char* const library : kLibraries) {
        if (name.rfind(library, 0) == 0) static_cast<Paths*>(paths)->emplace(library, path);
    }
    return 0;
}

std::string hashOfFiles() {
    Paths libraries;
    ::dl_iterate_phdr(addLibrary, &libraries);
    FileHashes files;
    std::string hashes = files.of("/proc/self/exe");
    for (const auto& [library, path] : libraries) hashes += files.of(path);
    return hashOf(hashes);
}

}  // namespace

const Program& thisProgram() {
    static const Program program{SE_HOST_VERSION, hashOfFiles()};
    return program;
}

Json toJson(const Program& program) {
    return {{"version", program.version}, {"files", program.files}};
}

Program programOf(const Json& json) {
    return {json.at("version"), json.at("files")};
}

}  // namespace se_host::sweep
