#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>

#include "host/output/output_target.h"
#include "host/output/temporaries.h"

namespace se_output {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kPermissions = 0777;  // without those that lend an owner's rights to a program
constexpr int kAttempts = 100;

void require(bool success) {
    if (!success) throw std::system_error(errno, std::generic_category());
}

// A folder, and the name of the file in it. The folder is held open, so that both stay the same ones when
// somebody moves the folder, or the working folder changes.
struct Place {
    explicit Place(const fs::path& path)
        : folder_path(fs::absolute(path.has_parent_path() ? path.parent_path() : fs::path("."))),
          folder(::open(folder_path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)),
          name(path.filename()) {
        require(folder.isOpen());
    }

    fs::path folder_path;
    Descriptor folder;
    std::string name;
};

std::optional<struct stat> statusOf(const Place& place) {
    struct stat status {};
    if (::fstatat(place.folder.number(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
        return status;
    require(errno == ENOENT);
    return std::nullopt;
}

// A file that replaces another one is not readable for more people meanwhile.
mode_t permissionsFor(const std::optional<struct stat>& old) {
    return old ? S_IRUSR | S_IWUSR : 0666;
}

std::string randomName() {
    uint64_t number = 0;
    require(::getrandom(&number, sizeof(number), 0) == sizeof(number));
    char name[32];
    std::snprintf(name, sizeof(name), ".unfinished-%016lx", number);
    return name;
}

// The name of a temporary beside the target, known while it exists.
struct NamedTemporary {
    explicit NamedTemporary(const Place& place)
        : folder(place.folder.number()), name(randomName()), known((place.folder_path / name).string()) {}
    ~NamedTemporary() {
        if (exists) ::unlinkat(folder, name.c_str(), 0);
    }

    int folder;
    std::string name;
    TemporaryName known;
    bool exists = false;
};

// Calls `create` with names until one is not taken.
template <class Create>
std::unique_ptr<NamedTemporary> createNamed(const Place& place, const Create& create) {
    for (int attempt = 0;; ++attempt) {
        const SignalsBlocked blocked;
        auto temporary = std::make_unique<NamedTemporary>(place);
        temporary->exists = create(temporary->name.c_str());
        if (temporary->exists) return temporary;
        require(errno == EEXIST && attempt < kAttempts);
    }
}

class ReplacedFile : public OutputTarget {
  public:
    ReplacedFile(Place place, std::optional<struct stat> old, Descriptor content,
                 std::unique_ptr<NamedTemporary> temporary)
        : OutputTarget(std::move(content)),
          place_(std::move(place)),
          old_(std::move(old)),
          temporary_(std::move(temporary)) {}

    void publish() override {
        require(::fsync(content()) == 0 || errno == EINVAL);  // a full disk may show only now
        const SignalsBlocked blocked;
        if (!temporary_) temporary_ = nameContent();
        if (old_) keepOwnerAndPermissions();
        const int folder = place_.folder.number();
        require(::renameat(folder, temporary_->name.c_str(), folder, place_.name.c_str()) == 0);
        temporary_->exists = false;
        temporary_.reset();
    }

  private:
    std::unique_ptr<NamedTemporary> nameContent() {
        return createNamed(place_, [&](const char* name) {
            return ::linkat(AT_FDCWD, pathOf(content()).c_str(), place_.folder.number(), name,
                            AT_SYMLINK_FOLLOW) == 0;
        });
    }

    // Another owner may not be permitted; then the group may be.
    void keepOwnerAndPermissions() {
        const bool kept = ::fchown(content(), old_->st_uid, old_->st_gid) == 0 ||
                          ::fchown(content(), static_cast<uid_t>(-1), old_->st_gid) == 0;
        static_cast<void>(kept);
        require(::fchmod(content(), old_->st_mode & kPermissions) == 0);
    }

    Place place_;
    std::optional<struct stat> old_;
    std::unique_ptr<NamedTemporary> temporary_;  // null: the content has no name
};

// Not open where the file system has no files without a name, or they could not be given one later.
Descriptor namelessFile(const Place& place, mode_t permissions) {
    Descriptor file(::openat(place.folder.number(), ".", O_TMPFILE | O_RDWR | O_CLOEXEC, permissions));
    if (file.isOpen() && ::access(pathOf(file.number()).c_str(), F_OK) == 0) return file;
    return Descriptor();
}

}  // namespace

std::unique_ptr<OutputTarget> replacedFile(const std::string& path) {
    Place place(path);
    const auto old = statusOf(place);
    require(!old || ::faccessat(place.folder.number(), place.name.c_str(), W_OK, AT_EACCESS) == 0);

    Descriptor content = namelessFile(place, permissionsFor(old));
    std::unique_ptr<NamedTemporary> temporary;
    if (!content.isOpen()) {
        temporary = createNamed(place, [&](const char* name) {
            content = Descriptor(::openat(place.folder.number(), name, O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC,
                                          permissionsFor(old)));
            return content.isOpen();
        });
    }
    return std::make_unique<ReplacedFile>(std::move(place), old, std::move(content), std::move(temporary));
}

}  // namespace se_output
