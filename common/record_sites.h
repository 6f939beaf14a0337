// Identities of the records that hosts recognise by source and line. An identity belongs to the statement,
// not to its present place in a file, so it never changes. The wrapper has a list of its own.
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
