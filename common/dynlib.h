// Shared libraries: opening one by path and resolving its symbols.
#pragma once

#include <cstddef>
#include <locale>
#include <sstream>
#include <string>
#include <vector>

#include "common/check.h"
#include "common/export.h"

namespace quill {

using DynLibHandle = void*;  // null: no library

// [any] Opens the library at `path` with all of its references bound; its symbols stay out of the program's
// global scope. A file that is no whole shared library for this processor is refused before the loader sees it.
// out:   *why, unless null: on failure the reason, one line that names the library; else it stays as it is.
// fails: null, without a record.
// The libraries that it needs are left to the loader. One that is missing is named in the reason; so is one for
// another processor, but as missing. One that was cut short may end the process with SIGBUS.
QUILL_COMMON_EXPORT DynLibHandle loadDynamicLibrary(const std::string& path);
QUILL_COMMON_EXPORT DynLibHandle loadDynamicLibrary(const std::string& path, std::string* why);

// [any] As loadDynamicLibrary, and the library stays loaded until the process ends, even when it closes itself.
QUILL_COMMON_EXPORT DynLibHandle loadPermanentLibrary(const std::string& path, std::string* why);

// [any] The address of the symbol that the library itself exports under exactly this name. fails: null,
// without a record, when it exports none; a name that only one of its dependencies exports counts as none.
QUILL_COMMON_EXPORT void* getSymbolAddress(DynLibHandle handle, const std::string& name);

// [any] Why an address that getSymbolAddress returned is not that of a function, or not that of a variable of
// `size` bytes that can be written: "is data", for example. Empty when it is.
QUILL_COMMON_EXPORT std::string whyNotFunction(const void* symbol);
QUILL_COMMON_EXPORT std::string whyNotVariable(const void* symbol, size_t size);

// [any] The elements of a range in order, written through a string stream in the C locale with `separator`
// between them. std::bad_alloc passes.
template <class Iterator>
std::string join(Iterator begin, Iterator end, const char* separator) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.exceptions(std::ios::badbit);  // a stream without memory would cut the text short
    for (Iterator element = begin; element != end; ++element) {
        if (element != begin) text << separator;
        text << *element;
    }
    return text.str();
}

// [any] Sets *sym to the symbol, null included; reports nothing.
template <class T>
void getSymbol(T* sym, DynLibHandle lib, const char* name) {
    *sym = reinterpret_cast<T>(getSymbolAddress(lib, name));
}

// [any] Sets *sym to the symbol and overwrites what *sym held. fails: fatal, naming the symbol.
template <class T>
void getSymbolOrDie(T* sym, DynLibHandle lib, const char* name) {
    getSymbol(sym, lib, name);
    QUILL_CHECK_AT(record_sites::kSymbolByName, *sym) << "Symbol " << name << " not found!";
}

// [any] Sets *sym to the first of the names that the library exports. Kept on purpose: a *sym that is not
// null on entry counts as found and stays, so that a caller may resolve a preferred symbol beforehand.
// fails: fatal, naming all of the names.
template <class T>
void getSymbolOrDie(T* sym, DynLibHandle lib, const std::vector<const char*>& names) {
    for (const char* name : names) {
        if (*sym) break;
        getSymbol(sym, lib, name);
    }
    QUILL_CHECK_AT(record_sites::kSymbolByList, *sym)
        << "Symbols " << join(names.begin(), names.end(), ",") << " not found!";
}

}  // namespace quill
