// What crosses the C border on failure: a status, and a line of text instead of an exception.
#pragma once

#include <cxxabi.h>

#include <cstddef>
#include <exception>
#include <new>
#include <string>

#include "host/engine/engine.h"
#include "host/se_host.h"

namespace se_host {

// Cut to `size` bytes with the terminating 0.
void copyText(const std::string& text, char* to, size_t size);

// Where a function says why it failed.
class Why {
  public:
    Why(char* text, size_t size) : text_(text), size_(size) { copyText({}, text, size); }

    // Returns `status`.
    se_host_status_t operator()(se_host_status_t status, const std::string& text) const;

  private:
    char* text_;
    size_t size_;
};

// Runs `call`; an exception is `status`, and a lack of memory SE_HOST_FAILED.
template <class Call>
se_host_status_t guarded(const Why& why, se_host_status_t status, const Call& call) {
    try {
        return call();
    } catch (const EngineInUse& error) {
        return why(SE_HOST_IN_USE, error.what());
    } catch (const std::bad_alloc&) {
        return why(SE_HOST_FAILED, "there is no memory left; end other programs");
    } catch (const abi::__forced_unwind&) {  // the engine ends the thread
        throw;
    } catch (const std::exception& error) {
        return why(status, error.what());
    } catch (...) {
        return why(SE_HOST_FAILED, "the engine threw an exception");
    }
}

}  // namespace se_host
