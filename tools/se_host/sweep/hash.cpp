#include "tools/se_host/sweep/hash.h"

#include <fcntl.h>
#include <xxhash.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <system_error>

#include "host/output/descriptor.h"
#include "host/output/input_file.h"

namespace se_host::sweep {
namespace {

constexpr size_t kPiece = size_t{1} << 20;

struct StateEnd {
    void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
};

std::string digits(const XXH128_hash_t& hash) {
    XXH128_canonical_t bytes;
    XXH128_canonicalFromHash(&bytes, hash);
    std::string text;
    for (const unsigned char byte : bytes.digest) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

std::string hashOfFile(const std::string& path) {
    const se_output::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) se_output::cannotRead(path, std::strerror(errno));
    const std::unique_ptr<XXH3_state_t, StateEnd> state(XXH3_createState());
    XXH3_128bits_reset(state.get());
    try {
        for (std::string piece; !(piece = se_output::readSome(file.number(), kPiece)).empty();) {
            XXH3_128bits_update(state.get(), piece.data(), piece.size());
        }
    } catch (const std::system_error& error) {
        se_output::cannotRead(path, error.code().message());
    }
    return digits(XXH3_128bits_digest(state.get()));
}

}  // namespace

std::string hashOf(std::string_view bytes) {
    return digits(XXH3_128bits(bytes.data(), bytes.size()));
}

std::string hashOfSamples(const std::vector<int16_t>& samples) {
    return digits(XXH3_128bits(samples.data(), samples.size() * sizeof(int16_t)));
}

const std::string& FileHashes::of(const std::string& path) {
    const auto found = known_.find(path);
    return found != known_.end() ? found->second : known_.emplace(path, hashOfFile(path)).first->second;
}

}  // namespace se_host::sweep
