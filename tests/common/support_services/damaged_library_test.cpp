// Files that are not a complete shared library: each is refused before the loader maps it, and the reason
// names it.
#include <elf.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "common/dynlib.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

constexpr const char* kCut = "; it was probably cut short while being copied";
constexpr uint64_t kPage = 4096;

class DamagedLibrary : public testing::Test {
  protected:
    DamagedLibrary() {
        std::string folder = testing::TempDir() + "damaged_library.XXXXXX";
        if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder");
        folder_ = folder;
        path_ = folder_ + "/library.so";
        std::ifstream whole(FIXTURE_EXPORTER, std::ios::binary);
        bytes_.assign(std::istreambuf_iterator<char>(whole), {});
        std::memcpy(&header_, bytes_.data(), sizeof(header_));
        segments_.resize(header_.e_phnum);
        std::memcpy(segments_.data(), bytes_.data() + header_.e_phoff, segments_.size() * sizeof(Elf64_Phdr));
    }
    ~DamagedLibrary() override { std::filesystem::remove_all(folder_); }

    // The library with the headers of header_ and segments_, cut to `size` bytes.
    void write(size_t size = std::numeric_limits<size_t>::max()) {
        std::memcpy(bytes_.data() + sizeof(header_), segments_.data(), segments_.size() * sizeof(Elf64_Phdr));
        std::memcpy(bytes_.data(), &header_, sizeof(header_));
        const auto length = static_cast<std::streamsize>(std::min(size, bytes_.size()));
        std::ofstream(path_, std::ios::binary).write(bytes_.data(), length);
    }

    Elf64_Phdr& segment(Elf64_Word type) {
        for (Elf64_Phdr& candidate : segments_) {
            if (candidate.p_type == type) return candidate;
        }
        throw std::runtime_error("no such segment");
    }

    Elf64_Phdr& lastLoaded() {
        Elf64_Phdr* last = nullptr;
        for (Elf64_Phdr& candidate : segments_) {
            if (candidate.p_type == PT_LOAD) last = &candidate;
        }
        return *last;
    }

    // Makes another header that of a segment after the last one, all of which the loader fills with zeros from
    // the byte `into_page` of its first page on.
    void addZeros(uint64_t offset, uint64_t into_page) {
        const uint64_t end = lastLoaded().p_vaddr + lastLoaded().p_memsz;
        const uint64_t address = (end / kPage + 1) * kPage + into_page;
        segment(PT_GNU_EH_FRAME) = {PT_LOAD, PF_R | PF_W, offset + into_page, address, address, 0,
                                    kPage,   kPage};
    }

    // The first page after the end of the file.
    uint64_t pageBehind() const { return (bytes_.size() / kPage + 1) * kPage; }

    void expectRefused(const std::string& reason) const {
        const test::ScopedLogCapture log(5);
        std::string why = "untouched";
        EXPECT_EQ(loadDynamicLibrary(path_, &why), nullptr);
        EXPECT_EQ(why, path_ + " " + reason);
        EXPECT_EQ(loadDynamicLibrary(path_), nullptr);
        EXPECT_TRUE(log.records().empty());
    }

    std::string folder_;
    std::string path_;
    std::vector<char> bytes_;
    Elf64_Ehdr header_{};
    std::vector<Elf64_Phdr> segments_;
};

const std::string kEndsBeforeSegments = std::string("ends before its loadable segments do") + kCut;

TEST_F(DamagedLibrary, IsLoadedWhenItIsWhole) {
    write();
    std::string why = "untouched";
    const DynLibHandle library = loadDynamicLibrary(path_, &why);
    EXPECT_NE(getSymbolAddress(library, "fixture_answer"), nullptr);
    EXPECT_EQ(why, "untouched");
}

TEST_F(DamagedLibrary, IsLoadedWhenItEndsWithItsLastSegment) {
    write(lastLoaded().p_offset + lastLoaded().p_filesz);
    EXPECT_NE(loadDynamicLibrary(path_), nullptr);
}

// Some programs that shrink libraries cut them so.
TEST_F(DamagedLibrary, IsLoadedWhenZerosBeginWithAPageBehindItsEnd) {
    addZeros(pageBehind(), 0);
    write();
    EXPECT_NE(loadDynamicLibrary(path_), nullptr);
}

// The loader maps the page in which the zeros begin, and clears the rest of it.
TEST_F(DamagedLibrary, IsLoadedWhenZerosBeginInThePageOfItsLastByte) {
    const uint64_t page = pageBehind();
    addZeros(page, kPage - 16);
    bytes_.resize(page + 1);
    write();
    EXPECT_NE(loadDynamicLibrary(path_), nullptr);
}

TEST_F(DamagedLibrary, IsRefusedWhenZerosBeginInAPageBehindItsEnd) {
    const uint64_t page = pageBehind();
    addZeros(page, kPage - 16);
    bytes_.resize(page);
    write();
    expectRefused(kEndsBeforeSegments);
}

TEST_F(DamagedLibrary, IsRefusedWhenTheLastSegmentLacksAByte) {
    write(lastLoaded().p_offset + lastLoaded().p_filesz - 1);
    expectRefused(kEndsBeforeSegments);
}

TEST_F(DamagedLibrary, IsRefusedWhenTheFirstSegmentLacksAByte) {
    write(segment(PT_LOAD).p_filesz - 1);
    expectRefused(kEndsBeforeSegments);
}

TEST_F(DamagedLibrary, IsRefusedWhenItIsCutInItsProgramHeaders) {
    write(header_.e_phoff + segments_.size() * sizeof(Elf64_Phdr) - 1);
    expectRefused(std::string("ends before its program headers do") + kCut);
}

TEST_F(DamagedLibrary, IsRefusedWhenItIsCutInItsHeader) {
    for (const size_t size : {4u, 40u, 63u}) {
        write(size);
        expectRefused(std::string("ends before its ELF header does") + kCut);
    }
}

TEST_F(DamagedLibrary, IsRefusedWhenItIsEmpty) {
    write(0);
    expectRefused(std::string("is empty") + kCut);
}

TEST_F(DamagedLibrary, IsRefusedWhenItIsText) {
    std::ofstream(path_) << "not a library";
    expectRefused("is not a shared library");
}

TEST_F(DamagedLibrary, IsRefusedWhenItIsFor32Bits) {
    header_.e_ident[EI_CLASS] = ELFCLASS32;
    write();
    expectRefused("is not built for x86-64 processors");
}

TEST_F(DamagedLibrary, IsRefusedWhenItIsForAnotherProcessor) {
    header_.e_machine = EM_AARCH64;
    write();
    expectRefused("is not built for x86-64 processors");
}

TEST_F(DamagedLibrary, IsRefusedWhenItIsBigEndian) {
    header_.e_ident[EI_DATA] = ELFDATA2MSB;
    write();
    expectRefused("is not built for x86-64 processors");
}

TEST_F(DamagedLibrary, IsRefusedWhenItIsAnObjectFile) {
    header_.e_type = ET_REL;
    write();
    expectRefused("is not a shared library but another kind of ELF file");
}

TEST_F(DamagedLibrary, IsRefusedWhenItsProgramHeadersHaveAnotherSize) {
    header_.e_phentsize = sizeof(Elf32_Phdr);
    write();
    expectRefused("has program headers of an unknown size");
}

TEST_F(DamagedLibrary, IsRefusedWhenItsProgramHeadersLieBehindItsEnd) {
    for (const uint64_t offset : {uint64_t{1} << 40, ~uint64_t{0}, ~uint64_t{0} - 100}) {
        header_.e_phoff = offset;
        write();
        expectRefused(std::string("ends before its program headers do") + kCut);
    }
}

TEST_F(DamagedLibrary, IsRefusedWhenTheEndOfASegmentWrapsAround) {
    segment(PT_LOAD).p_filesz = ~uint64_t{0};
    write();
    expectRefused(kEndsBeforeSegments);
    segment(PT_LOAD).p_offset = ~uint64_t{0} - 15;
    segment(PT_LOAD).p_filesz = 32;
    write();
    expectRefused(kEndsBeforeSegments);
}

TEST_F(DamagedLibrary, IsRefusedWhenItsDynamicSectionIsNotLoaded) {
    const uint64_t address = segment(PT_DYNAMIC).p_vaddr;
    for (const uint64_t elsewhere : {uint64_t{1} << 40, ~uint64_t{0} - 8, uint64_t{0} - address}) {
        segment(PT_DYNAMIC).p_vaddr = elsewhere;
        write();
        expectRefused("has its dynamic section outside of what is loaded");
    }
    segment(PT_DYNAMIC).p_vaddr = address;
    segment(PT_DYNAMIC).p_memsz = uint64_t{1} << 40;
    write();
    expectRefused("has its dynamic section outside of what is loaded");
}

// The file has its length before all of its bytes: a copy into reserved space was interrupted.
TEST_F(DamagedLibrary, IsRefusedWhenItsEndWasNeverWritten) {
    const uint64_t dynamic = segment(PT_DYNAMIC).p_offset;
    for (const uint64_t written : {dynamic, dynamic / 2, dynamic / 10}) {
        std::fill(bytes_.begin() + static_cast<std::ptrdiff_t>(written), bytes_.end(), char{0});
        write();
        expectRefused(std::string("has an empty dynamic section") + kCut);
    }
}

// After the bytes of the file the loader fills a segment with zeros.
TEST_F(DamagedLibrary, IsRefusedWhenItsDynamicSectionIsNotInTheFile) {
    lastLoaded().p_memsz = lastLoaded().p_filesz + 4096;
    segment(PT_DYNAMIC).p_vaddr = lastLoaded().p_vaddr + lastLoaded().p_filesz;
    write();
    expectRefused("has its dynamic section outside of what is loaded");
}

TEST_F(DamagedLibrary, IsRefusedWhenItIsMissing) {
    expectRefused("cannot be opened: No such file or directory");
}

TEST_F(DamagedLibrary, IsRefusedWhenItIsAFolder) {
    std::filesystem::create_directory(path_);
    expectRefused("is a folder, not a shared library");
}

// Neither opening nor reading waits for a process at the other end.
TEST_F(DamagedLibrary, IsRefusedWhenItIsAFifo) {
    ASSERT_EQ(::mkfifo(path_.c_str(), 0600), 0);
    expectRefused("is not a regular file");
}

TEST_F(DamagedLibrary, IsRefusedWhenItIsADevice) {
    std::filesystem::create_symlink("/dev/zero", path_);
    expectRefused("is not a regular file");
}

// Only its headers are read.
TEST_F(DamagedLibrary, IsRefusedWhenItIsAHugeHole) {
    std::ofstream(path_) << "no library";
    std::filesystem::resize_file(path_, uintmax_t{1} << 42);
    expectRefused("is not a shared library");
}

TEST_F(DamagedLibrary, LeavesNoFileOpen) {
    const int first = ::dup(0);
    ::close(first);
    write(100);
    loadDynamicLibrary(path_);
    const int second = ::dup(0);
    ::close(second);
    EXPECT_EQ(second, first);
}

TEST(UnboundLibrary, IsRefusedWithTheLoadersReason) {
    std::string why;
    EXPECT_EQ(loadDynamicLibrary(FIXTURE_UNBOUND, &why), nullptr);
    EXPECT_NE(why.find("undefined symbol"), std::string::npos) << why;
}

TEST(LibraryWithoutAPath, IsRefusedWithAReasonOfItsOwn) {
    std::string why;
    EXPECT_EQ(loadDynamicLibrary("", &why), nullptr);
    EXPECT_EQ(why, "the path of the library is empty");
}

// The loader finds it in its own folders.
TEST(LibraryByNameAlone, IsLookedForByTheLoader) {
    EXPECT_NE(loadDynamicLibrary("libc.so.6"), nullptr);
    std::string why;
    EXPECT_EQ(loadDynamicLibrary("no_such_library.so", &why), nullptr);
    EXPECT_NE(why.find("no_such_library.so"), std::string::npos) << why;
}

}  // namespace
}  // namespace quill
