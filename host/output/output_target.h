// Where an output goes when it is complete, and what holds it until then.
// fails, all: std::system_error.
#pragma once

#include <memory>
#include <string>

#include "host/output/descriptor.h"

namespace se_output {

class OutputTarget {
  public:
    explicit OutputTarget(Descriptor content) : content_(std::move(content)) {}
    virtual ~OutputTarget() = default;
    OutputTarget(const OutputTarget&) = delete;
    OutputTarget& operator=(const OutputTarget&) = delete;

    // The content so far: empty at first; can be read, written and sought in.
    int content() const { return content_.number(); }

    virtual void publish() = 0;

  private:
    Descriptor content_;
};

// A file that is replaced as a whole, and keeps its permissions and, where the system allows it, its owner. The
// content stands beside it, without a name where the file system can do that: then nothing is left of a process
// that is killed.
std::unique_ptr<OutputTarget> replacedFile(const std::string& path);

// A pipe, a terminal, a device, or a file that the process was started with: the content is kept in memory
// until it is complete, and is then written behind what stands there.
std::unique_ptr<OutputTarget> streamTo(Descriptor stream);

}  // namespace se_output
