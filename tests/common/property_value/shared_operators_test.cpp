// One instance of each type's operations in the whole process.
#include <gtest/gtest.h>

#include <set>
#include <thread>
#include <vector>

#include "common/dynlib.h"
#include "tests/common/property_value/typed_value.h"

namespace quill {
namespace {

template <class T>
const void* here() {
    return property_internal::PropertyValueOperatorsT<T>::staticCopy().get();
}

TEST(SharedOperators, AreTheSameInALibraryThatIsLoadedLater) {
    const DynLibHandle library = loadDynamicLibrary(FIXTURE_PROPERTIES);
    const void* (*operators_of)(int) = nullptr;
    getSymbolOrDie(&operators_of, library, "operators_of");
    const std::vector<const void*> ours = {here<float>(), here<long>(), here<bool>(), here<int>(),
                                           here<std::string>()};
    for (int type = 0; type < 5; ++type) EXPECT_EQ(operators_of(type), ours[size_t(type)]) << type;
}

TEST(SharedOperators, LetAValueCrossLibraries) {
    const DynLibHandle library = loadDynamicLibrary(FIXTURE_PROPERTIES);
    bool (*holds_string)(const void*) = nullptr;
    getSymbolOrDie(&holds_string, library, "holds_string");
    const PropertyValue text = test::textValue("text");
    const PropertyValue number = test::valueOf(1);
    EXPECT_TRUE(holds_string(&text));
    EXPECT_FALSE(holds_string(&number));
}

TEST(SharedOperators, AreOnePerTypeAndDistinctBetweenTypes) {
    const std::set<const void*> all = {here<float>(), here<long>(), here<bool>(), here<int>(),
                                       here<std::string>()};
    EXPECT_EQ(all.size(), 5u);
    EXPECT_EQ(here<int>(), here<int>());
}

TEST(SharedOperators, AreMadeOnceByThreadsThatArriveTogether) {
    std::vector<const void*> seen(4);
    std::vector<std::thread> threads;
    for (const void*& each : seen) threads.emplace_back([&each] { each = here<float>(); });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(seen, std::vector<const void*>(4, here<float>()));
}

}  // namespace
}  // namespace quill
