// Loaded before a program's own libraries: adds an offset, read from a shared file, to every clock.
//
// It takes no lock and no memory and asks the kernel directly. The address sanitizer asks the time
// while it holds its allocator's lock: a library that opens files to know the time hangs there.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace {

constexpr std::int64_t second = 1'000'000'000;
const volatile std::int64_t* sharedOffset = nullptr;  // nanoseconds; null until it is mapped

__attribute__((constructor)) void mapOffset()
{
    const char* path = std::getenv("MOVED_CLOCK_FILE");
    if (!path) return;

    const long file = syscall(SYS_openat, AT_FDCWD, path, O_RDONLY | O_CLOEXEC);
    if (file < 0) return;
    void* memory =
        mmap(nullptr, sizeof *sharedOffset, PROT_READ, MAP_SHARED, static_cast<int>(file), 0);
    (void)syscall(SYS_close, file);
    if (memory != MAP_FAILED) sharedOffset = static_cast<const volatile std::int64_t*>(memory);
}

std::int64_t offset()
{
    return sharedOffset ? *sharedOffset : 0;
}

std::int64_t nanoseconds(const timespec& time)
{
    return time.tv_sec * second + time.tv_nsec;
}

timespec asTime(std::int64_t nanoseconds)
{
    return {.tv_sec = nanoseconds / second, .tv_nsec = nanoseconds % second};
}

bool measuresProcessorTime(clockid_t clock)
{
    return clock < 0 || clock == CLOCK_PROCESS_CPUTIME_ID || clock == CLOCK_THREAD_CPUTIME_ID;
}

}  // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    if (syscall(SYS_clock_gettime, clock, time) < 0) return -1;
    if (!measuresProcessorTime(clock)) *time = asTime(nanoseconds(*time) + offset());
    return 0;
}

int gettimeofday(timeval* time, void*) noexcept
{
    timespec now{};
    (void)clock_gettime(CLOCK_REALTIME, &now);
    *time = {.tv_sec = now.tv_sec, .tv_usec = now.tv_nsec / 1000};
    return 0;
}

time_t time(time_t* result) noexcept
{
    timespec now{};
    (void)clock_gettime(CLOCK_REALTIME, &now);
    if (result) *result = now.tv_sec;
    return now.tv_sec;
}

// The kernel's timers know nothing of the offset.
int timerfd_settime(int timer, int flags, const itimerspec* wanted, itimerspec* before) noexcept
{
    itimerspec real = *wanted;
    const std::int64_t at = nanoseconds(wanted->it_value);
    if ((flags & TFD_TIMER_ABSTIME) != 0 && at > 0) {
        const std::int64_t shifted = at - offset();
        real.it_value = asTime(shifted > 0 ? shifted : 1);  // 0 would switch the timer off
    }
    return static_cast<int>(syscall(SYS_timerfd_settime, timer, flags, &real, before));
}
}
