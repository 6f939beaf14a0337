// Identities of the records that hosts recognise by source and line. They name the statement, not the
// place where it happens to stand today, so they never move. The wrapper keeps its own list of the kind.
#pragma once

namespace quill {

struct RecordSite {
    const char* source;
    int line;
};

namespace record_sites {

inline constexpr RecordSite kSymbolByName{"common/dynlib", 34};
inline constexpr RecordSite kSymbolByList{"common/dynlib", 45};
inline constexpr RecordSite kFailedConversion{"common/property_value", 39};
inline constexpr RecordSite kGetOnEmptyNode{"common/property_node", 569};
inline constexpr RecordSite kEmptyPropertyPath{"common/properties", 728};

}  // namespace record_sites
}  // namespace quill
