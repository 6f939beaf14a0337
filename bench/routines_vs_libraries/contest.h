// Calls that compute the same and are timed in turn.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "kernel_check/timing/rounds.h"

namespace routines_vs_libraries {

enum class Role {
    ours,   // checked bit by bit
    peer,   // of a public library; plausible within its tolerance
    plain,  // a loop without intrinsics, left to the compiler
    limit,  // of the machine; computes nothing
};

struct Contestant {
    std::string name;
    Role role;
    timing::Repeated run;
    // Makes the call on the contest's problem and returns the error of its result. Null for a call that is
    // checked elsewhere and for a limit.
    std::function<double()> error;
    double tolerance = 0;
    double work = 0;  // of one call; 0: the contest's
};

// The figure that a table shows for a call.
struct Figure {
    const char* unit;
    bool is_rate;  // work a cycle, higher is better; else cycles for a unit of work
};

// One column of one table.
struct Contest {
    std::string subject;    // the table, "convolve_i16_i16, 160 outputs"
    std::string parameter;  // what differs between its columns, "taps"
    int value;              // in this one
    Figure figure;
    double work;  // of one call
    std::vector<Contestant> contestants;
    std::string beside = {};         // the contestant whose time the others' are divided by, if any
    bool count_allocations = false;  // of a call, too
};

struct Result {
    std::string area, subject, parameter;
    int value;
    Figure figure;
    std::string name;
    Role role;
    double cycles, nanoseconds, work;
    std::string beside;  // as the contest has it
    double allocations;  // for a unit of work; negative: not counted

    double amount() const { return figure.is_rate ? work / cycles : cycles / work; }
};

}  // namespace routines_vs_libraries
