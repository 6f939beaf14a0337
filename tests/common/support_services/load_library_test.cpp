// Opening a shared library by path.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "common/dynlib.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

TEST(LoadLibrary, OpensALibraryByPath) {
    EXPECT_NE(loadDynamicLibrary(FIXTURE_EXPORTER), nullptr);
}

TEST(LoadLibrary, OpensTheSameLibraryOnce) {
    EXPECT_EQ(loadDynamicLibrary(FIXTURE_EXPORTER), loadDynamicLibrary(FIXTURE_EXPORTER));
}

TEST(LoadLibrary, KeepsTheSymbolsOutOfTheGlobalScope) {
    ASSERT_NE(getSymbolAddress(loadDynamicLibrary(FIXTURE_EXPORTER), "fixture_answer"), nullptr);
    EXPECT_EQ(::dlsym(RTLD_DEFAULT, "fixture_answer"), nullptr);
}

TEST(LoadLibrary, OfAMissingFileIsNullWithoutARecord) {
    const test::ScopedLogCapture log(5);
    EXPECT_EQ(loadDynamicLibrary("/nowhere/none.so"), nullptr);
    EXPECT_TRUE(log.records().empty());
}

TEST(LoadLibrary, OfAFileThatIsNoLibraryIsNull) {
    const std::string path = testing::TempDir() + "no_library_" + std::to_string(::getpid());
    std::FILE* const file = std::fopen(path.c_str(), "w");
    ASSERT_NE(file, nullptr);
    std::fputs("not a library", file);
    std::fclose(file);
    EXPECT_EQ(loadDynamicLibrary(path), nullptr);
    std::remove(path.c_str());
}

TEST(LoadLibrary, WithAnUnresolvedReferenceIsNull) {
    EXPECT_EQ(loadDynamicLibrary(FIXTURE_UNBOUND), nullptr);
}

TEST(LoadLibrary, OfAnEmptyPathIsNullAndNotTheProgram) {
    EXPECT_EQ(loadDynamicLibrary(""), nullptr);
}

}  // namespace
}  // namespace quill
