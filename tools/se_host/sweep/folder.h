// The files of a sweep's folder.
#pragma once

#include <cstddef>
#include <string>

#include "common/string_printf.h"

namespace se_host::sweep {

class Folder {
  public:
    explicit Folder(std::string path) : path_(std::move(path)) {}

    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + "/" + name; }

    std::string plan() const {
        return file("plan.json");
    }  // written last: without it the rest is not complete
    std::string manifest() const { return file("manifest.jsonl"); }
    std::string tasks() const { return file("tasks.jsonl"); }
    std::string kept() const { return file("kept.jsonl"); }  // rows of the shards of earlier plans
    std::string tunings() const { return file("tunings"); }
    std::string shards() const { return file("shards"); }
    std::string overTime() const { return file("over-time"); }

    std::string shard(size_t number) const { return shards() + quill::stringPrintf("/%05zu.jsonl", number); }
    std::string part(size_t number) const {
        return shard(number) + ".part";
    }  // of a shard that is not finished

  private:
    std::string path_;
};

}  // namespace se_host::sweep
