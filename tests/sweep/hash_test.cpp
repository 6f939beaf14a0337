// Hashes of content.
#include "tools/se_host/sweep/hash.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

#include "host/output/errors.h"

namespace se_host::sweep {
namespace {

// Known answers of XXH3-128.
TEST(Hash, IsXxh3) {
    EXPECT_EQ(hashOf(""), "99aa06d3014798d86001c324468d497f");
    EXPECT_EQ(hashOf("a"), "a96faf705af16834e6c632b61e964e1f");
}

TEST(Hash, OfAFileIsThatOfItsBytes) {
    const std::string path = testing::TempDir() + "se_sweep_hash" + std::to_string(::getpid());
    const std::string bytes(3 << 20, 'x');
    std::ofstream(path) << bytes;
    EXPECT_EQ(FileHashes().of(path), hashOf(bytes));
    std::remove(path.c_str());
}

TEST(Hash, OfSamplesIsThatOfTheirBytesInTheFile) {
    EXPECT_EQ(hashOfSamples({0x6261, 0x6463}), hashOf("abcd"));
}

TEST(Hash, OfAFileThatIsNotThereNamesIt) {
    EXPECT_THROW(FileHashes().of("/nowhere/a.wav"), se_output::Failure);
}

}  // namespace
}  // namespace se_host::sweep
