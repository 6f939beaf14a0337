// Sound files that are damaged in each way that a few bytes can: the host refuses them in one line or reads what they
// hold, and leaves nothing behind.
#include <sndfile.h>

#include <fstream>
#include <sstream>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class DamagedSound : public HostTest {
  protected:
    // The bytes of a recording of 8 channels.
    std::string recording(int format) const {
        writeSound(path("whole"), patternedSound(480), format);
        std::ostringstream content;
        content << std::ifstream(path("whole"), std::ios::binary).rdbuf();
        std::remove(path("whole").c_str());
        return content.str();
    }

    HostRun processBytes(const std::string& bytes) {
        std::remove(path("out.wav").c_str());
        writeText("in.wav", bytes);
        noteFiles();
        return process({"--bypass", "--quiet"});
    }

    // By the command that starts no engine.
    void expectReadOrRefused(const std::string& bytes, const std::string& what) {
        SCOPED_TRACE(what);
        writeText("in.wav", bytes);
        noteFiles();
        const HostRun result = run({"spectrum", path("in.wav"), "--size", "16"});
        if (result.exit_code == 0) {
            EXPECT_EQ(result.err, "");
        } else {
            expectRefused(result, result.exit_code == kWrongUsage ? kWrongUsage : kFailure, "in.wav'");
        }
    }
};

constexpr int kWav = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
constexpr size_t kWavHeader = 44;
constexpr size_t kSizeOfData = 40;  // place in the header

std::string withNumber(std::string bytes, size_t place, uint32_t number) {
    for (int i = 0; i < 4; ++i) bytes[place + static_cast<size_t>(i)] = static_cast<char>(number >> 8 * i);
    return bytes;
}

TEST_F(DamagedSound, AWavThatIsCutShortIsTold) {
    const std::string whole = recording(kWav);
    for (const size_t missing : {1U, 2U, 16U, 1000U, 7679U}) {
        expectRefused(processBytes(whole.substr(0, whole.size() - missing)), kFailure,
                      "in.wav': it is cut short, " + std::to_string(missing) +
                          " bytes are missing; give the whole file");
    }
}

TEST_F(DamagedSound, AWavOf64BitsThatIsCutShortIsTold) {
    std::string whole = recording(SF_FORMAT_RF64 | SF_FORMAT_PCM_16);
    whole.resize(whole.size() - 100);
    expectRefused(processBytes(whole), kFailure, "it is cut short, 100 bytes are missing");
}

TEST_F(DamagedSound, ABigEndianWavThatIsCutShortIsTold) {
    std::string whole = recording(kWav | SF_ENDIAN_BIG);
    ASSERT_EQ(whole.substr(0, 4), "RIFX");
    whole.resize(whole.size() - 100);
    expectRefused(processBytes(whole), kFailure, "it is cut short, 100 bytes are missing");
}

TEST_F(DamagedSound, AFlacThatIsCutShortIsTold) {
    std::string whole = recording(SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    whole.resize(whole.size() / 2);
    expectRefused(processBytes(whole), kFailure, "in.wav'");
}

// Programs that write to a pipe cannot go back to the header.
TEST_F(DamagedSound, AWavWithoutALengthIsReadToItsEnd) {
    const std::string whole = recording(kWav);
    for (const uint32_t stated : {0x7fffffffu, 0x7ffff000u, 0x80000000u, 0xffffffffu}) {
        expectDone(processBytes(withNumber(whole, kSizeOfData, stated)));
        EXPECT_EQ(readSound(path("out.wav")).frames(), 480u) << stated;
    }
}

TEST_F(DamagedSound, WhatStandsBehindTheSamplesIsNoSound) {
    expectDone(processBytes(recording(kWav) + "LIST\x04\x00\x00\x00INFO"));
    EXPECT_EQ(readSound(path("out.wav")).frames(), 480u);
}

TEST_F(DamagedSound, EveryBeginningIsReadOrRefused) {
    for (const int format : {kWav, SF_FORMAT_FLAC | SF_FORMAT_PCM_16}) {
        const std::string whole = recording(format);
        for (size_t length = 1; length < 120; length += 7) {
            expectReadOrRefused(whole.substr(0, length), std::to_string(length) + " bytes");
        }
    }
}

TEST_F(DamagedSound, EveryHeaderWithAWrongByteIsReadOrRefused) {
    const std::string whole = recording(kWav);
    for (size_t place = 0; place < kWavHeader; ++place) {
        for (const char wrong : {'\x00', '\x7f', '\xff'}) {
            std::string damaged = whole;
            damaged[place] = wrong;
            expectReadOrRefused(damaged, "byte " + std::to_string(place) + " is " + std::to_string(wrong));
        }
    }
}

TEST_F(DamagedSound, AFlacWithWrongBytesIsReadOrRefused) {
    const std::string whole = recording(SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    for (size_t place = 0; place < whole.size(); place += place < 60 ? 3 : 397) {
        std::string damaged = whole;
        damaged[place] = static_cast<char>(~damaged[place]);
        expectReadOrRefused(damaged, "byte " + std::to_string(place));
    }
}

// A chunk that never ends, and very many chunks.
TEST_F(DamagedSound, AWavOfOddChunksIsReadOrRefused) {
    const std::string head = recording(kWav).substr(0, 36);
    std::string chunks;
    for (int i = 0; i < 100000; ++i) chunks.append("junk\0\0\0\0", 8);
    expectReadOrRefused(head + chunks, "many chunks");
    expectReadOrRefused(head + "junk\xff\xff\xff\xff" + std::string(1000, '\0'), "a chunk that never ends");
}

}  // namespace
}  // namespace se_host_test
