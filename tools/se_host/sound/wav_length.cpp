#include "tools/se_host/sound/wav_length.h"

#include <unistd.h>

#include <cstring>

namespace se_host {
namespace {

constexpr uint64_t kFirstChunk = 12;
constexpr uint64_t kChunkHeader = 8;
constexpr int kMostChunks = 10000;         // before the samples; no program writes so many
constexpr uint32_t kUnknown = 0x7fff0000;  // programs that write to a pipe state this length, or more
constexpr uint32_t kIn64Bits = 0xffffffff;

// Numbers of a file, in its byte order.
class Reader {
  public:
    explicit Reader(int descriptor) : descriptor_(descriptor), is_big_endian_(has(0, "RIFX")) {}

    bool has(uint64_t place, const char* name) const {
        char text[4] = {};
        return read(place, text, sizeof(text)) && std::memcmp(text, name, sizeof(text)) == 0;
    }

    // 0 behind the end of the file.
    uint32_t number(uint64_t place) const {
        unsigned char bytes[4] = {};
        if (!read(place, bytes, sizeof(bytes))) return 0;
        uint32_t value = 0;
        for (int i = 0; i < 4; ++i) value = value << 8 | bytes[is_big_endian_ ? i : 3 - i];
        return value;
    }

    bool holds(uint64_t place, size_t size) const {
        char byte = 0;
        return read(place + size - 1, &byte, 1);
    }

  private:
    bool read(uint64_t place, void* to, size_t size) const {
        return ::pread(descriptor_, to, size, static_cast<off_t>(place)) == static_cast<ssize_t>(size);
    }

    int descriptor_;
    bool is_big_endian_;
};

}  // namespace

std::optional<uint64_t> statedEndOfWav(int descriptor) {
    const Reader file(descriptor);
    const bool is_wav = file.has(0, "RIFF") || file.has(0, "RIFX") || file.has(0, "RF64");
    if (!is_wav || !file.has(8, "WAVE")) return std::nullopt;
    uint64_t long_size = 0;
    uint64_t place = kFirstChunk;
    for (int chunk = 0; chunk < kMostChunks && file.holds(place, kChunkHeader); ++chunk) {
        const uint32_t size = file.number(place + 4);
        const uint64_t content = place + kChunkHeader;
        if (file.has(place, "ds64")) {
            long_size = file.number(content + 8) | uint64_t{file.number(content + 12)} << 32;
        }
        if (file.has(place, "data")) {
            if (size == kIn64Bits && long_size != 0) return content + long_size;
            if (size == 0 || size >= kUnknown) return std::nullopt;
            return content + size;
        }
        place = content + size + size % 2;
    }
    return std::nullopt;
}

}  // namespace se_host
