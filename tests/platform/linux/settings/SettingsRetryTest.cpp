// When a failed write of the settings is retried.
#include <gtest/gtest.h>

#include "platform/linux/base/SdEventRunLoop.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/settings/FileDefaultsStore.h"
#include "tests/platform/linux/support/FullDisk.h"
#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

class SettingsRetryTest : public testing::Test {
protected:
    TemporaryFolder folder;
    SdEventRunLoop loop;
    std::string file = folder.path() / "settings.toml";

    std::string text() const { return readFile(file, 1000).value_or("none"); }

    void handleEvents() const
    {
        while (sd_event_run(loop.event(), 0) > 0) {
        }
    }
};

TEST_F(SettingsRetryTest, WritesAValueOnceTheDiskHasRoomAgain)
{
    folder.write("settings.toml", "limit = 80\n");
    FileDefaultsStore store(loop.event(), file, Seconds{0.001});
    {
        const FullDisk fault(0);
        store.set("limit", std::int64_t{85});
    }
    EXPECT_EQ(text(), "limit = 80\n");

    EXPECT_TRUE(runUntil(loop, [this] { return text() == "limit = 85\n"; }));
}

TEST_F(SettingsRetryTest, KeepsRetryingWhileTheDiskIsFull)
{
    FileDefaultsStore store(loop.event(), file, Seconds{0.001});
    {
        const FullDisk fault(0);
        store.set("limit", std::int64_t{85});
        bool isOver = false;
        const auto timer = loop.after(Seconds{0.02}, [&] { isOver = true; });
        ASSERT_TRUE(runUntil(loop, [&] { return isOver; }));  // after a first retry
    }

    EXPECT_TRUE(runUntil(loop, [this] { return text() == "limit = 85\n"; }));
}

TEST_F(SettingsRetryTest, IsIdleOnceTheValueIsWritten)
{
    FileDefaultsStore store(loop.event(), file, Seconds{0.001});
    {
        const FullDisk fault(0);
        store.set("limit", std::int64_t{85});
    }
    ASSERT_TRUE(runUntil(loop, [this] { return text() == "limit = 85\n"; }));
    handleEvents();

    EXPECT_EQ(sd_event_run(loop.event(), 50'000), 0);
}

}  // namespace
}  // namespace vorlane::platform
