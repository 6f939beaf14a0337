#include "tests/engines/test_engine.h"

#include <dlfcn.h>

#include <cstdlib>
#include <iostream>

#include "common/file.h"

namespace quill::test {

std::string enginePath(const std::string& name) {
    return getExePath() + "/selibs/" + name;
}

bool isEngineInProcess(const std::string& name) {
    void* const library = dlopen(enginePath(name).c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr) dlclose(library);
    return library != nullptr;
}

TestEngine::TestEngine(const std::string& name) : library_(loadDynamicLibrary(enginePath(name))) {
    void* const control = symbol("test_engine_control");
    if (control == nullptr) {
        std::cerr << enginePath(name) << " is not a test engine\n";
        std::abort();
    }
    control_ = reinterpret_cast<decltype(&test_engine_control)>(control)();
}

std::vector<std::string> TestEngine::calls() const {
    std::vector<std::string> result;
    for (int number = 0; number < control_->num_calls(); ++number)
        result.emplace_back(control_->call(number));
    return result;
}

std::vector<std::string> TestEngine::calls(const std::string& function) const {
    std::vector<std::string> result;
    for (const std::string& call : calls()) {
        if (call.compare(0, function.size() + 1, function + "(") == 0) result.push_back(call);
    }
    return result;
}

}  // namespace quill::test
