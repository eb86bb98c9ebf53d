#include "platform/qt/chart/LocalTimes.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/platform/linux/support/ChildProcess.h"

namespace vorlane::platform {
namespace {

constexpr Date noonUtc{1767268800.0};  // 2026-01-01 12:00 UTC

const std::filesystem::path zones = "/usr/share/zoneinfo";
const std::filesystem::path chosen = "/etc/localtime";
const std::filesystem::path next = "/etc/localtime.new";

// Replaces the symbolic link, as system settings do.
void travelTo(const char* zone)
{
    std::filesystem::create_symlink(zones / zone, next);
    std::filesystem::rename(next, chosen);
}

// Replaces the file with a copy, as systems without symbolic links do.
void travelByCopyTo(const char* zone)
{
    std::filesystem::copy_file(zones / zone, next);
    std::filesystem::rename(next, chosen);
}

TEST(LocalTimesTest, FollowsChangesOfTheSystemsTimeZone)
{
    if (const auto reason = cannotMount(); !reason.empty()) GTEST_SKIP() << reason;

    EXPECT_TRUE(holdsInChild([] {
        qunsetenv("TZ");
        ASSERT_TRUE(mountDisk("/etc", "1000000"));
        const LocalTimes times{.locale = QLocale(QLocale::English, QLocale::UnitedKingdom)};

        travelTo("Europe/Berlin");
        EXPECT_EQ(times.shortTime(noonUtc), "13:00");
        travelTo("Asia/Tokyo");
        EXPECT_EQ(times.shortTime(noonUtc), "21:00");
        travelByCopyTo("America/New_York");
        EXPECT_EQ(times.shortTime(noonUtc), "07:00");
        travelByCopyTo("Asia/Kathmandu");
        EXPECT_EQ(times.shortTime(noonUtc), "17:45");
    }));
}

}  // namespace
}  // namespace vorlane::platform
