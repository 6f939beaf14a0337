// The rows of a shard. While it is worked on they go to a file with the ending .part, one write a row; when all are there
// it gets its name. A run that was ended leaves its whole rows behind, which the next one takes over.
#pragma once

#include <set>
#include <string>

#include "host/output/descriptor.h"
#include "tools/se_host/sweep/folder.h"
#include "tools/se_host/sweep/json_lines.h"

namespace se_host::sweep {

class Shard {
  public:
    // Opens or makes the file, and cuts off a row that was not written to its end.
    // fails: Failure when another process has it open, on this machine or on one that shares the file system.
    Shard(const Folder& folder, size_t number);

    // Of the rows that are there.
    const std::set<std::string>& keys() const { return keys_; }

    // fails: Failure.
    void append(const Json& row);
    // Gives the file its name. needs: called once. fails: Failure.
    void finish();

  private:
    std::string part_, name_;
    se_output::Descriptor file_;
    std::set<std::string> keys_;
};

bool isFinished(const Folder& folder, size_t shard);

// fails: Failure while another process works on a shard of the folder.
void requireIdle(const Folder& folder);

// The files of rows that are there: those that are kept, then the shards, finished or not.
std::vector<std::string> rowFiles(const Folder& folder);

// The keys of the whole rows in a file, and where they end.
size_t visitRows(const std::string& path,
                 const std::function<void(const std::string& key, std::string_view line)>& visit);

}  // namespace se_host::sweep
