// Loaded before a program's own libraries: adds offsets, read from a shared file, to every clock.
//
// It takes no lock, allocates nothing and calls the kernel directly: the address sanitizer asks for
// the time while it holds its allocator's lock, where a library that opens files would deadlock.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace {

constexpr std::int64_t second = 1'000'000'000;

// In nanoseconds.
struct Offsets {
    std::int64_t passed;  // added to every clock
    std::int64_t set;     // added to the time of day only
    std::int64_t asleep;  // part of `passed` that clocks which stop during sleep do not count
};

// Only the offsets selected by `turn` are read; the others may be written in several steps.
struct Shared {
    std::int64_t turn;
    Offsets first, second;
};
const volatile Shared* shared = nullptr;  // null until it is mapped

// The clock of each timer descriptor, plus one; 0 means unknown.
std::array<volatile unsigned char, 1024> timerClocks{};

__attribute__((constructor)) void mapOffsets()
{
    const char* path = std::getenv("MOVED_CLOCK_FILE");
    if (!path) return;

    const long file = syscall(SYS_openat, AT_FDCWD, path, O_RDONLY | O_CLOEXEC);
    if (file < 0) return;
    void* memory = mmap(nullptr, sizeof *shared, PROT_READ, MAP_SHARED, static_cast<int>(file), 0);
    (void)syscall(SYS_close, file);
    if (memory != MAP_FAILED) shared = static_cast<const volatile Shared*>(memory);
}

std::int64_t offset(clockid_t clock)
{
    if (!shared) return 0;
    const volatile Offsets& offsets = shared->turn == 0 ? shared->first : shared->second;
    if (clock == CLOCK_BOOTTIME || clock == CLOCK_BOOTTIME_ALARM) return offsets.passed;
    const bool ofDay = clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE ||
                       clock == CLOCK_REALTIME_ALARM || clock == CLOCK_TAI;
    return offsets.passed + (ofDay ? offsets.set : -offsets.asleep);
}

clockid_t clockOf(int timer)
{
    const auto known = timer >= 0 && timer < static_cast<int>(timerClocks.size())
                           ? timerClocks[static_cast<unsigned>(timer)]
                           : 0;
    return known > 0 ? known - 1 : CLOCK_MONOTONIC;
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
    if (!measuresProcessorTime(clock)) *time = asTime(nanoseconds(*time) + offset(clock));
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

int timerfd_create(int clock, int flags) noexcept
{
    const int timer = static_cast<int>(syscall(SYS_timerfd_create, clock, flags));
    if (timer >= 0 && timer < static_cast<int>(timerClocks.size())) {
        timerClocks[static_cast<unsigned>(timer)] = static_cast<unsigned char>(clock + 1);
    }
    return timer;
}

// The kernel does not know the offsets, so an absolute time is converted back to real time.
int timerfd_settime(int timer, int flags, const itimerspec* wanted, itimerspec* before) noexcept
{
    itimerspec real = *wanted;
    const std::int64_t at = nanoseconds(wanted->it_value);
    if ((flags & TFD_TIMER_ABSTIME) != 0 && at > 0) {
        const std::int64_t shifted = at - offset(clockOf(timer));
        real.it_value = asTime(shifted > 0 ? shifted : 1);  // 0 would switch the timer off
    }
    return static_cast<int>(syscall(SYS_timerfd_settime, timer, flags, &real, before));
}
}
