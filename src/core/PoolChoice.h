#pragma once

// OVI_NO_POOL leaves every block to the heap, where its end and its failure can be seen: by the
// address sanitizer, and by tests that let memory run out.
#if defined(OVI_NO_POOL)
#elif defined(__SANITIZE_ADDRESS__)
#define OVI_NO_POOL 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OVI_NO_POOL 1
#endif
#endif
