#include "tools/se_host/measures/measures.h"

#include "tools/se_host/measures/table.h"

namespace se_host {

const std::vector<Measure>& measures() {
    static const std::vector<Measure> table = [] {
        std::vector<Measure> all;
        for (const MeasureRow& row : measureRows()) all.push_back(row.measure);
        return all;
    }();
    return table;
}

Measured measure(const Analysis& analysis) {
    Measured measured;
    for (const MeasureRow& row : measureRows()) {
        measured.values.push_back(valueOf(row.whole, analysis, {row.first_block, analysis.blocks()}));
    }
    return measured;
}

}  // namespace se_host
