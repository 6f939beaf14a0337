// The identity of the wrapper's own records: one source name for all of them, tag "se_wrapper", and the
// lines of those that hosts recognise. All other records carry their own line.
#pragma once

#include "common/check.h"
#include "common/logging.h"
#include "common/record_sites.h"

#define SE_WRAPPER_SOURCE "webrtc_common/se_wrapper"

// The site of a check of the wrapper that hosts do not recognise by its line.
#define SE_WRAPPER_HERE (::quill::RecordSite{SE_WRAPPER_SOURCE, __LINE__})

#define SE_WRAPPER_LOG(level) QUILL_LOG_AT(level, "se_wrapper", SE_WRAPPER_SOURCE, __LINE__)
#define SE_WRAPPER_LOG_AT(site, level) QUILL_LOG_AT(level, "se_wrapper", (site).source, (site).line)

namespace quill::media::se_wrapper::record_sites {

inline constexpr RecordSite kLibraryNotOpened{SE_WRAPPER_SOURCE, 220};
inline constexpr RecordSite kLibraryLoaded{SE_WRAPPER_SOURCE, 307};
inline constexpr RecordSite kBlockSize{SE_WRAPPER_SOURCE, 641};
inline constexpr RecordSite kChannelCount{SE_WRAPPER_SOURCE, 646};

}  // namespace quill::media::se_wrapper::record_sites
