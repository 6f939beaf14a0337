// The identities by which hosts recognise records. They must not change.
#include "common/record_sites.h"

#include <gtest/gtest.h>

#include <string>

namespace quill {
namespace {

TEST(RecordSites, OfTheSupportLibraryDoNotChange) {
    const struct {
        RecordSite site;
        std::string source;
        int line;
    } rows[] = {
        {record_sites::kSymbolByName, "common/dynlib", 34},
        {record_sites::kSymbolByList, "common/dynlib", 45},
        {record_sites::kFailedConversion, "common/property_value", 39},
        {record_sites::kGetOnEmptyNode, "common/property_node", 569},
        {record_sites::kEmptyPropertyPath, "common/properties", 728},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.site.source, row.source);
        EXPECT_EQ(row.site.line, row.line) << row.source;
    }
}

}  // namespace
}  // namespace quill
