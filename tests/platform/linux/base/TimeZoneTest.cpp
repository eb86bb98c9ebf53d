#include "platform/linux/base/TimeZone.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <functional>
#include <string>

#include "platform/linux/base/SystemCalendar.h"

namespace vorlane::platform {
namespace {

constexpr Date noonUtc{1767268800.0};  // 2026-01-01 12:00 UTC

// Changes the system's time zone, for a child process only.
class TimeZoneTest : public testing::Test {
protected:
    // The local hours at noon UTC, before and after the system's zone changes from Berlin to Tokyo.
    // Empty when a process may not have its own mounts.
    static std::string hours(const std::function<void()>& prepare)
    {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) return "no pipe";
        const pid_t child = fork();
        if (child == 0) {
            const auto seenHours = inOwnMounts() ? travelled(prepare) : std::string();
            _exit(write(ends[1], seenHours.data(), seenHours.size()) < 0);
        }
        (void)close(ends[1]);
        std::array<char, 16> text{};
        const auto length = read(ends[0], text.data(), text.size());
        (void)close(ends[0]);
        int status = 0;
        (void)waitpid(child, &status, 0);
        if (status != 0) return "failed";
        return {text.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
    }

private:
    static bool inOwnMounts()
    {
        const auto user = getuid();
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
        return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    }

    static bool travelTo(const char* zone)
    {
        const auto file = std::string("/usr/share/zoneinfo/") + zone;
        return mount(file.c_str(), "/etc/localtime", nullptr, MS_BIND, nullptr) == 0;
    }

    static std::string travelled(const std::function<void()>& prepare)
    {
        const SystemCalendar calendar;
        if (!travelTo("Europe/Berlin")) return {};
        prepare();
        const auto before = calendar.timeOfDay(noonUtc).hour;
        if (!travelTo("Asia/Tokyo")) return {};
        return std::to_string(before) + ", " + std::to_string(calendar.timeOfDay(noonUtc).hour);
    }
};

TEST_F(TimeZoneTest, FollowsTheSystemsZoneWithoutTZ)
{
    const auto seen = hours([] { (void)unsetenv("TZ"); });
    if (seen.empty()) GTEST_SKIP() << "no user namespaces here";

    EXPECT_EQ(seen, "13, 21");
}

TEST_F(TimeZoneTest, FollowsTheSystemsZoneWhenTZNamesItsFile)
{
    for (const auto* const named : {":/etc/localtime", "/etc/localtime"}) {
        const auto seen = hours([named] {
            (void)setenv("TZ", named, 1);
            followSystemTimeZone();
        });
        if (seen.empty()) GTEST_SKIP() << "no user namespaces here";

        EXPECT_EQ(seen, "13, 21") << named;
    }
}

TEST_F(TimeZoneTest, KeepsAZoneThatTheUserChose)
{
    (void)setenv("TZ", "Asia/Tokyo", 1);

    followSystemTimeZone();

    EXPECT_STREQ(std::getenv("TZ"), "Asia/Tokyo");
    (void)unsetenv("TZ");
}

}  // namespace
}  // namespace vorlane::platform
