#include "kernel_check/problem/fault_trap.h"

#include <csetjmp>
#include <csignal>

#include <ucontext.h>

namespace quill::test {
namespace {

sigjmp_buf g_return;
Fault g_fault;

constexpr greg_t kWriteAccess = 2;  // of the processor's page fault code

void leave(int, siginfo_t* info, void* context) {
    const auto& registers = static_cast<const ucontext_t*>(context)->uc_mcontext.gregs;
    g_fault.address = reinterpret_cast<uintptr_t>(info->si_addr);
    g_fault.write = (registers[REG_ERR] & kWriteAccess) != 0;
    siglongjmp(g_return, 1);
}

}  // namespace

std::optional<Fault> trapFault(void (*call)(const void*), const void* argument) {
    struct sigaction action = {};
    struct sigaction former = {};
    action.sa_sigaction = leave;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSEGV, &action, &former);
    const bool faulted = sigsetjmp(g_return, 1) != 0;
    if (!faulted) call(argument);
    sigaction(SIGSEGV, &former, nullptr);
    return faulted ? std::optional<Fault>(g_fault) : std::nullopt;
}

}  // namespace quill::test
