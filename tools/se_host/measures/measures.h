// What a recording and a run through the engine tell in numbers. docs/measures.md defines each of them.
// Threads: one.
#pragma once

#include <optional>
#include <ostream>
#include <vector>

namespace se_host {

struct Analysis;

enum class Better { kMore, kLess, kNeither };  // kNeither: also what describes the recording alone

struct Measure {
    const char* name;   // as in JSON and CSV
    const char* unit;   // "dB"; empty: none
    const char* title;  // a few words, for tables and pictures
    Better better;
    bool is_angle;  // in degrees; 360 is 0
};

// The table, in the order of tables and files.
const std::vector<Measure>& measures();

struct Measured {
    std::vector<std::optional<double>>
        values;  // in the table's order; nothing where the recording does not allow it
};

// Rounded to 0.0001, so that the last bits of a processor's logarithms are not seen.
Measured measure(const Analysis& analysis);

// CSV: one row a second of the recording, a column for the second's end and each measure. A cell is empty where the second
// does not allow the measure.
void writeOverTime(std::ostream& to, const Analysis& analysis);

}  // namespace se_host
