// Objects of static storage that are initialised later: each enters a list at construction, and one pass over
// the list initialises them all.
// Threads: [setup]. The list has no lock; it changes while libraries are loaded and unloaded.
#pragma once

#include "common/export.h"

namespace quill {

// Tag tells one list from another. The order of the virtual functions is part of the interface.
template <class Tag, class Args>
class QUILL_COMMON_EXPORT StaticDeferredInit {
  public:
    virtual void initialize(const Args& args) = 0;

    // Leaves the list, so that a library may be unloaded.
    virtual ~StaticDeferredInit() {
        for (StaticDeferredInit** link = &s_head; *link != nullptr; link = &(*link)->next) {
            if (*link != this) continue;
            *link = next;
            return;
        }
    }

    StaticDeferredInit(const StaticDeferredInit&) = delete;
    StaticDeferredInit& operator=(const StaticDeferredInit&) = delete;

    static StaticDeferredInit* s_head;  // the latest first

    StaticDeferredInit* next;

  protected:
    StaticDeferredInit() : next(s_head) { s_head = this; }
};

}  // namespace quill
