// A folder for each test, and the ways in which an output fails.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace se_output_test {

inline constexpr unsigned kNobody = 65534;  // a user and a group without rights

class OutputTest : public ::testing::Test {
  protected:
    OutputTest();
    ~OutputTest() override;

    std::string path(const std::string& name) const { return folder_ + "/" + name; }
    void writeText(const std::string& name, const std::string& text) const;
    std::string text(const std::string& name) const;
    // Names in the folder, sorted.
    std::vector<std::string> files() const;

  private:
    std::string folder_;
};

// The text of the Failure that `work` throws; it is one line. Empty: it throws none.
std::string failureOf(const std::function<void()>& work);

// Writes a whole output. fails: Failure.
void write(const std::string& path, const std::string& text);

// Runs `work` in a child, which then ends by itself. result: the child's number, when it has ended.
int runInChild(const std::function<void()>& work);

// From now on this process has its own mounts. false: it may not; the test is then skipped.
bool ownMounts();

// From now on this process has no rights beyond its files. needs: root.
void becomeNobody();

}  // namespace se_output_test
