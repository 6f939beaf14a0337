#include "common/elf_file.h"

#include <elf.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <vector>

namespace quill {
namespace {

constexpr const char* kUnreadable = "cannot be read";
constexpr const char* kProbablyCut = "; it was probably cut short while being copied";

// A file that is open during the lifetime of this object.
class OpenFile {
  public:
    explicit OpenFile(const std::string& path)
        : descriptor_(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {}
    ~OpenFile() {
        if (isOpen()) ::close(descriptor_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    bool isOpen() const { return descriptor_ >= 0; }
    bool status(struct stat* status) const { return ::fstat(descriptor_, status) == 0; }

    // Whether all of the bytes could be read.
    bool read(uint64_t offset, void* to, size_t size) const {
        auto* rest = static_cast<char*>(to);
        while (size > 0) {
            const ssize_t got = ::pread(descriptor_, rest, size, static_cast<off_t>(offset));
            if (got < 0 && errno == EINTR) continue;
            if (got <= 0) return false;
            rest += got;
            offset += static_cast<uint64_t>(got);
            size -= static_cast<size_t>(got);
        }
        return true;
    }

  private:
    int descriptor_;
};

// Whether [offset, offset + size) lies inside [0, end), for any numbers.
bool isInside(uint64_t offset, uint64_t size, uint64_t end) {
    return size <= end && offset <= end - size;
}

// Whether the file has what the loader reads of it for the segment. For one without bytes in the file that is the
// page in which the segment begins, unless it begins with a page: the loader clears the rest of that page.
bool isInFile(const Elf64_Phdr& segment, uint64_t file_size) {
    if (segment.p_filesz > 0) return isInside(segment.p_offset, segment.p_filesz, file_size);
    const uint64_t into_page = segment.p_offset % static_cast<uint64_t>(::sysconf(_SC_PAGESIZE));
    return into_page == 0 || segment.p_offset - into_page < file_size;
}

// Whether the part comes from the segment's bytes in the file. Before the segment its offset wraps around to a
// number larger than every file.
bool contains(const Elf64_Phdr& segment, const Elf64_Phdr& part) {
    return isInside(part.p_vaddr - segment.p_vaddr, part.p_memsz, segment.p_filesz);
}

// Each of these returns the fault, without the file's name; empty when there is none.

std::string objectionToHeader(const Elf64_Ehdr& header) {
    if (header.e_ident[EI_CLASS] != ELFCLASS64 || header.e_ident[EI_DATA] != ELFDATA2LSB ||
        header.e_machine != EM_X86_64)
        return "is not built for x86-64 processors";
    if (header.e_type != ET_DYN) return "is not a shared library but another kind of ELF file";
    if (header.e_phentsize != sizeof(Elf64_Phdr)) return "has program headers of an unknown size";
    return {};
}

std::string objectionToSegments(const std::vector<Elf64_Phdr>& segments, uint64_t file_size) {
    for (const Elf64_Phdr& segment : segments) {
        if (segment.p_type == PT_LOAD && !isInFile(segment, file_size))
            return std::string("ends before its loadable segments do") + kProbablyCut;
    }
    return {};
}

// A file of full length may still end in zeros that were never overwritten. The loader takes a dynamic section that
// is present for one that has entries.
std::string objectionToDynamicSection(const OpenFile& file, const std::vector<Elf64_Phdr>& segments) {
    for (const Elf64_Phdr& part : segments) {
        if (part.p_type != PT_DYNAMIC) continue;
        const auto segment = std::find_if(segments.begin(), segments.end(), [&](const Elf64_Phdr& each) {
            return each.p_type == PT_LOAD && contains(each, part);
        });
        if (segment == segments.end()) return "has its dynamic section outside of what is loaded";
        Elf64_Sxword first_tag = DT_NULL;
        if (!file.read(segment->p_offset + (part.p_vaddr - segment->p_vaddr), &first_tag, sizeof(first_tag)))
            return kUnreadable;
        if (first_tag == DT_NULL) return std::string("has an empty dynamic section") + kProbablyCut;
    }
    return {};
}

std::string objectionToContents(const OpenFile& file, uint64_t size) {
    if (size == 0) return std::string("is empty") + kProbablyCut;
    Elf64_Ehdr header{};
    if (!file.read(0, &header, std::min<uint64_t>(size, sizeof(header)))) return kUnreadable;
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) return "is not a shared library";
    if (size < sizeof(header)) return std::string("ends before its ELF header does") + kProbablyCut;
    if (std::string objection = objectionToHeader(header); !objection.empty()) return objection;

    std::vector<Elf64_Phdr> segments(header.e_phnum);
    const size_t table_size = segments.size() * sizeof(Elf64_Phdr);
    if (!isInside(header.e_phoff, table_size, size))
        return std::string("ends before its program headers do") + kProbablyCut;
    if (!file.read(header.e_phoff, segments.data(), table_size)) return kUnreadable;
    if (std::string objection = objectionToSegments(segments, size); !objection.empty()) return objection;
    return objectionToDynamicSection(file, segments);
}

std::string objectionTo(const std::string& path) {
    const OpenFile file(path);
    struct stat status {};
    if (!file.isOpen() || !file.status(&status)) {
        const int error = errno;
        return std::string("cannot be opened: ") + std::strerror(error);
    }
    if (S_ISDIR(status.st_mode)) return "is a folder, not a shared library";
    if (!S_ISREG(status.st_mode)) return "is not a regular file";
    return objectionToContents(file, static_cast<uint64_t>(status.st_size));
}

}  // namespace

std::string whyNotLoadable(const std::string& path) {
    const std::string objection = objectionTo(path);
    return objection.empty() ? objection : path + " " + objection;
}

}  // namespace quill
