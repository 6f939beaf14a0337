// The export macro of libse_wrapper. Everything else in the library is hidden.
#pragma once

#ifdef SE_WRAPPER_BUILD
#define SE_WRAPPER_EXPORT __attribute__((visibility("default")))
#else
#define SE_WRAPPER_EXPORT
#endif
