#include "common/dynlib.h"

#include <dlfcn.h>
#include <link.h>

namespace quill {

DynLibHandle loadDynamicLibrary(const std::string& path) {
    if (path.empty()) return nullptr;  // dlopen would take it for the program itself
    return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* getSymbolAddress(DynLibHandle handle, const std::string& name) {
    if (handle == nullptr) return nullptr;
    void* const address = dlsym(handle, name.c_str());
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
