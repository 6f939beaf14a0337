// `se_host sweep task`: one task, in a process that `sweep run` starts for it. The order is read from standard input, the
// row goes to standard output.
#include <unistd.h>

#include <iostream>
#include <iterator>
#include <memory>

#include "host/output/descriptor.h"
#include "host/output/errors.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/engine/supervisor.h"
#include "tools/se_host/sweep/task.h"

namespace se_host {
namespace {

using sweep::Json;

sweep::Order readOrder() {
    const std::string text{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    try {
        return sweep::orderOf(sweep::objectIn(text));
    } catch (const Json::exception&) {
        throw se_output::UsageError("this is not a task; 'se_host sweep run' gives one");
    }
}

// What an engine prints is no row: it goes where messages go.
se_output::Descriptor takeStandardOutput() {
    se_output::Descriptor output = se_output::duplicate(STDOUT_FILENO);
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    return output;
}

void readAndDoTask() {
    const sweep::Order order = readOrder();
    superviseEngine({});
    const se_output::Descriptor output = takeStandardOutput();
    se_output::writeAll(output.number(), sweep::lineOf(sweep::doTask(order)));
}

}  // namespace

void addSweepTask(CLI::App& sweep) {
    CLI::App* const command = sweep.add_subcommand("task", "Do one task");
    command->group("");  // not for people
    command->callback(readAndDoTask);
}

}  // namespace se_host
