// The test's side of the scriptable engine: opens a build and controls it. A library is loaded only once in a
// process, so the test controls the same engine before and after the wrapper loads it.
#pragma once

#include <string>
#include <vector>

#include "common/dynlib.h"
#include "tests/engines/control.h"

namespace quill::test {

class TestEngine {
  public:
    // The build of this name in the folder "selibs" beside the test program. Ends the program when there is
    // no such build.
    explicit TestEngine(const std::string& name = "test_engines/full");

    const TestEngineControl* operator->() const { return control_; }

    // What the build exports under this name, null when it exports none.
    void* symbol(const std::string& name) const { return getSymbolAddress(library_, name); }

    // The recorded calls; those of one function; how many calls of a function there were.
    std::vector<std::string> calls() const;
    std::vector<std::string> calls(const std::string& function) const;
    int count(const std::string& function) const { return static_cast<int>(calls(function).size()); }

  private:
    DynLibHandle library_;
    const TestEngineControl* control_;
};

// The full path of an engine build as the wrapper builds it, from its name.
std::string enginePath(const std::string& name);

// Whether the build of this name is loaded.
bool isEngineInProcess(const std::string& name);

}  // namespace quill::test
