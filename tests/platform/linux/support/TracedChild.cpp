#include "tests/platform/linux/support/TracedChild.h"

#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr unsigned patience = 60;  // seconds
constexpr int refused = 97;        // the child's exit code when it may not be traced

// System calls that do not exist, by which the child talks to its parent.
constexpr long beginCall = 6001;
constexpr long endCall = 6002;

#ifdef __x86_64__

constexpr int syscallStop = SIGTRAP | 0x80;

// System calls for memory, signals and exiting, which file faults do not affect.
constexpr std::array uncounted{
    SYS_mmap,          SYS_munmap,       SYS_mremap,         SYS_mprotect,   SYS_madvise,
    SYS_brk,           SYS_futex,        SYS_sched_yield,    SYS_getpid,     SYS_gettid,
    SYS_rt_sigaction,  SYS_sigaltstack,  SYS_rt_sigprocmask, SYS_exit_group, SYS_exit,
    SYS_clock_gettime, SYS_rt_sigreturn, SYS_prctl,          SYS_getrlimit,  SYS_prlimit64};

// The registers of a child that is stopped at the entry or the exit of a system call.
class Stop {
public:
    explicit Stop(pid_t process) : child(process)
    {
        (void)ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    }

    long number() const { return static_cast<long>(registers.orig_rax); }

    TracedChild::Plan plan() const
    {
        return {.trouble = static_cast<TracedChild::Trouble>(registers.rdi),
                .call = static_cast<int>(registers.rsi),
                .error = static_cast<int>(registers.rdx),
                .onwards = registers.r10 != 0};
    }

    // At the entry: makes the kernel skip the call.
    void skip()
    {
        registers.orig_rax = static_cast<unsigned long long>(-1);
        store();
    }

    // At the entry: halves the number of bytes to read or write. False when it cannot.
    bool halve()
    {
        const bool moves = number() == SYS_read || number() == SYS_write;
        if (!moves || registers.rdx < 2) return false;
        registers.rdx /= 2;
        store();
        return true;
    }

    // At the exit: sets the call's result.
    void answer(int result)
    {
        registers.rax = static_cast<unsigned long long>(result);
        store();
    }

private:
    void store() { (void)ptrace(PTRACE_SETREGS, child, nullptr, &registers); }

    pid_t child;
    user_regs_struct registers{};
};

class Tracer {
public:
    Tracer(pid_t process, const std::function<void()>& event) : child(process), happening(event) {}

    int follow()
    {
        int status = 0;
        while (waitpid(child, &status, 0) == child && WIFSTOPPED(status)) {
            const int signal = react(WSTOPSIG(status));
            (void)ptrace(PTRACE_SYSCALL, child, nullptr, signal);
        }
        return status;
    }

private:
    // Handles a stop and returns the signal to deliver to the child.
    int react(int signal)
    {
        if (signal == syscallStop) {
            inside = !inside;
            inside ? enter() : leave();
            return 0;
        }
        if (signal != SIGSTOP) return signal;
        (void)ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
        return 0;
    }

    void enter()
    {
        Stop stop(child);
        if (stop.number() == beginCall) {
            plan = stop.plan();
            calls = 0;
            interfered = false;
            counting = true;
        } else if (stop.number() == endCall) {
            counting = false;
            result = calls * 2 + (interfered ? 1 : 0);
        } else if (counting && counts(stop.number())) {
            const int call = calls++;
            if (call == plan.call || (plan.onwards && call > plan.call)) interfere(stop);
        }
    }

    void leave()
    {
        if (result != 0) Stop(child).answer(std::exchange(result, 0));
    }

    void interfere(Stop& stop)
    {
        switch (plan.trouble) {
            case TracedChild::Trouble::none:
                return;
            case TracedChild::Trouble::shortage:
                interfered = stop.halve() || interfered;
                return;
            case TracedChild::Trouble::kill:
                (void)kill(child, SIGKILL);
                return;
            case TracedChild::Trouble::happening:
                happening();
                break;
            case TracedChild::Trouble::error:
                stop.skip();
                result = -plan.error;
        }
        interfered = true;
    }

    // The sanitizers probe an address with four calls: pipe, write from the address, close, close.
    bool counts(long number)
    {
        if (number == SYS_pipe2) sanitizers = 4;
        if (sanitizers > 0) return --sanitizers, false;
        return std::ranges::find(uncounted, number) == uncounted.end();
    }

    pid_t child;
    const std::function<void()>& happening;
    TracedChild::Plan plan;
    int calls = 0;
    bool counting = false;
    bool interfered = false;
    bool inside = false;
    int sanitizers = 0;  // how many of the next calls are the sanitizers'
    int result = 0;      // what the current call returns instead
};

#endif

[[noreturn]] void runTraced(const std::function<void()>& work)
{
    (void)alarm(patience);
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(refused);
    (void)raise(SIGSTOP);
    work();
    (void)std::fflush(stdout);
    _exit(testing::Test::HasFailure() ? 1 : 0);
}

}  // namespace

int TracedChild::statusOf(const std::function<void()>& work, const std::function<void()>& happening)
{
#ifdef __x86_64__
    (void)std::fflush(stdout);
    const auto child = fork();
    if (child == 0) runTraced(work);
    return Tracer(child, happening).follow();
#else
    (void)work;
    (void)happening;
    return -1;
#endif
}

bool TracedChild::holds(const std::function<void()>& work, const std::function<void()>& happening)
{
    const int status = statusOf(work, happening);
    if (WIFSIGNALED(status)) ADD_FAILURE() << strsignal(WTERMSIG(status));
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::string TracedChild::impossibleBecause()
{
#ifdef __x86_64__
    const int status = statusOf([] {}, nullptr);
    if (WIFEXITED(status) && WEXITSTATUS(status) == refused) return "tracing is not permitted here";
    return "";
#else
    return "system calls can be traced on x86-64 only";
#endif
}

void TracedChild::begin(const Plan& plan)
{
    (void)syscall(beginCall, static_cast<int>(plan.trouble), plan.call, plan.error, plan.onwards);
}

TracedChild::Outcome TracedChild::end()
{
    const auto result = static_cast<int>(syscall(endCall));
    return {.calls = result / 2, .interfered = result % 2 != 0};
}

}  // namespace vorlane::platform
