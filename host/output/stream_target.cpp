#include <unistd.h>

#include "host/output/output_target.h"

namespace se_output {
namespace {

constexpr size_t kPiece = 65536;

class Stream : public OutputTarget {
  public:
    explicit Stream(Descriptor stream) : OutputTarget(fileInMemory()), stream_(std::move(stream)) {}

    void publish() override {
        ::lseek(content(), 0, SEEK_SET);
        for (std::string piece; !(piece = readSome(content(), kPiece)).empty();) {
            writeAll(stream_.number(), piece);
        }
    }

  private:
    Descriptor stream_;
};

}  // namespace

std::unique_ptr<OutputTarget> streamTo(Descriptor stream) {
    return std::make_unique<Stream>(std::move(stream));
}

}  // namespace se_output
