// The caller's log while a handle is open.
#pragma once

#include "host/se_host.h"

namespace se_host {

// The caller's log, and standard error again unless the handle keeps it.
class Log {
  public:
    explicit Log(const se_host_options_t& options);
    ~Log();
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    // Whether there is one; it stays from now on.
    bool keep();
    static void giveBack();

  private:
    bool taken_;
};

}  // namespace se_host
