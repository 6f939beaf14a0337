#include "common/dynlib.h"

#include <dlfcn.h>
#include <link.h>

#include <utility>

#include "common/elf_file.h"

namespace quill {
namespace {

// Why the library must not be opened; empty when it may.
std::string objectionTo(const std::string& path) {
    if (path.empty()) return "the path of the library is empty";  // dlopen would take it for the program
    // The loader searches its own folders for a name without a slash, so there is no file to check yet.
    if (path.find('/') == std::string::npos) return {};
    return whyNotLoadable(path);
}

// The loader's message about its last failure on this thread.
std::string loaderError(const std::string& path) {
    const char* const text = ::dlerror();
    return text == nullptr ? path + " cannot be loaded" : text;
}

DynLibHandle load(const std::string& path, int lifetime, std::string* why) {
    std::string reason = objectionTo(path);
    if (reason.empty()) {
        if (const DynLibHandle library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | lifetime))
            return library;
        reason = loaderError(path);
    }
    if (why != nullptr) *why = std::move(reason);
    return nullptr;
}

}  // namespace

DynLibHandle loadDynamicLibrary(const std::string& path, std::string* why) {
    return load(path, 0, why);
}

DynLibHandle loadDynamicLibrary(const std::string& path) {
    return load(path, 0, nullptr);
}

// The flag holds while the library's constructors run, which may close it already.
DynLibHandle loadPermanentLibrary(const std::string& path, std::string* why) {
    return load(path, RTLD_NODELETE, why);
}

void* getSymbolAddress(DynLibHandle handle, const std::string& name) {
    if (handle == nullptr) return nullptr;
    void* const address = ::dlsym(handle, name.c_str());
    if (address == nullptr) return nullptr;

    // dlsym searches the dependencies too; the owner of the address must be the library itself.
    link_map* library = nullptr;
    link_map* owner = nullptr;
    Dl_info info;
    if (dlinfo(handle, RTLD_DI_LINKMAP, &library) != 0) return nullptr;
    if (dladdr1(address, &info, reinterpret_cast<void**>(&owner), RTLD_DL_LINKMAP) == 0) return nullptr;
    return owner == library ? address : nullptr;
}

}  // namespace quill
