// An open file, and its content as a whole.
// fails, all: std::system_error.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace se_output {

class Descriptor {
  public:
    explicit Descriptor(int opened = kNone) : number_(opened) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, kNone)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor();

    int number() const { return number_; }
    bool isOpen() const { return number_ != kNone; }

  private:
    static constexpr int kNone = -1;
    int number_;
};

// Makes sure that standard input, output and error are open. Without it the first files that a process opens would
// take the places of closed ones, and texts would be written into outputs.
void openStandardStreams();

// A file in memory, empty.
Descriptor fileInMemory();

// Another descriptor of the same open file.
Descriptor duplicate(int descriptor);

// All of it; waits when a pipe is full.
void writeAll(int descriptor, std::string_view bytes);

// At most `most` bytes from the present position on; empty at the end.
std::string readSome(int descriptor, size_t most);

// The whole file, from its beginning. needs: a file that can be sought in.
std::string contentOf(int descriptor);

// The path under which a descriptor of this process can be opened once more.
std::string pathOf(int descriptor);

}  // namespace se_output
