#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/base/FileDescriptor.h"
#include "platform/linux/power/MachineBattery.h"
#include "platform/linux/power/PowerSupplyFolder.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* batteryText =
    "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=Discharging\nPOWER_SUPPLY_CAPACITY=60\n";

class PowerSupplyTroubleTest : public testing::Test {
protected:
    TemporaryFolder folder;

    std::vector<std::string> names() const
    {
        std::vector<std::string> list;
        const auto supplies = readPowerSupplies(folder.path());
        if (!supplies) return {"the folder cannot be listed"};
        for (const auto& supply : *supplies) list.push_back(supply.name);
        return list;
    }

    // Absent without a battery.
    std::optional<std::int64_t> percent() const
    {
        const auto supplies = readPowerSupplies(folder.path());
        const auto battery = supplies ? machineBattery(*supplies) : std::nullopt;
        return battery ? battery->percent : std::nullopt;
    }
};

// /proc/self/mem looks like a regular file, but reading it fails.
TEST_F(PowerSupplyTroubleTest, SkipsFilesThatFailToBeRead)
{
    std::array<char, 1> byte{};
    const FileDescriptor memory(open("/proc/self/mem", O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(::read(memory.get(), byte.data(), byte.size()), -1);
    ASSERT_EQ(errno, EIO);
    folder.write("BAT1/uevent", batteryText);
    std::filesystem::create_directory(folder.path() / "BAT0");
    std::filesystem::create_symlink("/proc/self/mem", folder.path() / "BAT0/uevent");
    folder.write("BAT0/type", "Mains\n");
    std::filesystem::create_symlink("/proc/self/mem", folder.path() / "BAT0/online");

    EXPECT_THAT(names(), ElementsAre("BAT0", "BAT1"));  // BAT0 from its remaining files
    EXPECT_EQ(percent(), 60);
}

// A file under a lease blocks any other process that opens it without O_NONBLOCK.
TEST_F(PowerSupplyTroubleTest, NeverWaitsForALeasedFile)
{
    folder.write("BAT0/uevent", batteryText);
    folder.write("BAT1/uevent", batteryText);
    const auto leased = (folder.path() / "BAT0/uevent").string();
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe2(ready.data(), O_CLOEXEC), 0);
    const pid_t holder = fork();
    if (holder == 0) {
        (void)signal(SIGIO, SIG_IGN);
        const int file = open(leased.c_str(), O_RDWR);
        const char taken = fcntl(file, F_SETLEASE, F_WRLCK) == 0 ? 'y' : 'n';
        (void)write(ready[1], &taken, 1);
        while (true) (void)pause();
    }
    char taken = 0;
    ASSERT_EQ(::read(ready[0], &taken, 1), 1);
    const FileDescriptor reading(ready[0]);
    const FileDescriptor writing(ready[1]);

    if (taken == 'y') {
        EXPECT_THAT(names(), ElementsAre("BAT1"));
    }
    (void)kill(holder, SIGKILL);
    (void)waitpid(holder, nullptr, 0);
    EXPECT_THAT(names(), ElementsAre("BAT0", "BAT1"));
    if (taken != 'y') GTEST_SKIP() << "this file system has no leases";
}

TEST_F(PowerSupplyTroubleTest, SkipsStrayFilesAndBrokenLinks)
{
    folder.write("BAT0/uevent", batteryText);
    folder.write("BAT1", "a file where a folder should be");
    std::filesystem::create_symlink(folder.path() / "gone", folder.path() / "BAT2");
    std::filesystem::create_symlink(folder.path() / "BAT3", folder.path() / "BAT3");
    std::filesystem::create_directory(folder.path() / "BAT4");
    std::filesystem::create_symlink("nowhere", folder.path() / "BAT4/uevent");
    std::filesystem::create_symlink("..", folder.path() / "BAT4/loop");

    EXPECT_THAT(names(), ElementsAre("BAT0"));
}

TEST_F(PowerSupplyTroubleTest, ReadsSuppliesOfAnyName)
{
    const std::string longName(255, 'n');
    for (const std::string name : {"hid-\xff\xfe\x80-battery", "%s%n%n", "a b\nc", "<b>&amp;",
                                   "-rf", "\x1b[31m", longName.c_str()}) {
        folder.write(std::filesystem::path(name) / "uevent", "POWER_SUPPLY_TYPE=Mains\n");
    }
    folder.write("BAT0/uevent", batteryText);

    EXPECT_EQ(names().size(), 8U);
    EXPECT_EQ(percent(), 60);
}

TEST_F(PowerSupplyTroubleTest, FindsTheBatteryAmongFiveHundredSupplies)
{
    for (int i = 0; i < 499; ++i) {
        folder.write("hidpp_battery_" + std::to_string(i) + "/uevent",
                     "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_SCOPE=Device\n"
                     "POWER_SUPPLY_CAPACITY=1\n");
    }
    folder.write("zz-BAT0/uevent", batteryText);

    EXPECT_EQ(names().size(), 500U);
    EXPECT_EQ(percent(), 60);
}

// A supply changes, disappears and reappears while it is read; no reading mixes two states.
TEST_F(PowerSupplyTroubleTest, ReadsAConsistentStateWhileFilesChange)
{
    std::string filling = batteryText;
    filling.replace(filling.find("Discharging"), 11, "Charging");
    filling.replace(filling.find("60"), 2, "99");
    folder.write("BAT0/uevent", batteryText);
    folder.write("new", filling);
    folder.write("old", batteryText);
    std::atomic<bool> isOver = false;
    std::thread kernel([&] {
        std::error_code ignored;
        const auto uevent = folder.path() / "BAT0/uevent";
        for (int i = 0; !isOver; ++i) {
            const auto next = folder.path() / "next";
            std::filesystem::copy_file(folder.path() / (i % 2 == 0 ? "new" : "old"), next, ignored);
            std::filesystem::rename(next, uevent, ignored);
            if (i % 5 != 0) continue;
            std::filesystem::rename(folder.path() / "BAT0", folder.path() / ".away", ignored);
            std::this_thread::yield();
            std::filesystem::rename(folder.path() / ".away", folder.path() / "BAT0", ignored);
        }
    });

    std::vector<std::string> odd;
    int present = 0;
    for (int i = 0; i < 2000 || present == 0; ++i) {
        const auto supplies = readPowerSupplies(folder.path());
        ASSERT_TRUE(supplies);
        const auto battery = machineBattery(*supplies);
        if (!battery) continue;
        ++present;
        const bool isOld = battery->percent == 60 && battery->status == ChargeStatus::discharging;
        const bool isNew = battery->percent == 99 && battery->status == ChargeStatus::charging;
        if (!isOld && !isNew) odd.push_back(std::to_string(battery->percent.value_or(-1)));
    }
    isOver = true;
    kernel.join();

    EXPECT_THAT(odd, IsEmpty());
}

}  // namespace
}  // namespace vorlane::platform
