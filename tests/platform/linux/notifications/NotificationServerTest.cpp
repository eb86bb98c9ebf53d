#include "platform/linux/notifications/NotificationServer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "tests/platform/linux/notifications/FakeNotificationServer.h"
#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

constexpr const char* service = "org.freedesktop.Notifications";

class NotificationServerTest : public testing::Test {
protected:
    NotificationServerTest() { (void)unsetenv("XDG_CURRENT_DESKTOP"); }

    SdEventRunLoop loop;
    PrivateBus bus;
    BusPointer session = bus.connect(loop);
    FakeNotificationServer fake{bus, loop};
    int changes = 0;
    int readies = 0;

    std::unique_ptr<NotificationServer> open()
    {
        return std::make_unique<NotificationServer>(
            session.get(), NotificationServer::Events{.changed = [this] { ++changes; },
                                                      .ready = [this] { ++readies; }});
    }
};

TEST_F(NotificationServerTest, IsUnavailableWithoutAServer)
{
    const auto server = open();

    EXPECT_FALSE(server->available());
    EXPECT_EQ(server->owner(), "");
}

TEST_F(NotificationServerTest, IsAvailableFromTheStartWhenAServerRuns)
{
    fake.start();

    const auto server = open();

    EXPECT_TRUE(server->available());
    EXPECT_EQ(server->owner()[0], ':');
}

TEST_F(NotificationServerTest, IsAvailableFromTheStartWhenTheBusCanStartAServer)
{
    const PrivateBus other(std::vector{PrivateBus::Service{service, "/bin/false"}});
    session = other.connect(loop);

    const auto server = open();

    EXPECT_TRUE(server->available());
    EXPECT_EQ(server->owner(), "");
}

TEST_F(NotificationServerTest, NoticesWhenAServerIsInstalled)
{
    const auto server = open();
    EXPECT_FALSE(server->available());

    bus.add({.name = service, .command = "/bin/false"});

    EXPECT_TRUE(runUntil(loop, [&] { return server->available(); }));
}

TEST_F(NotificationServerTest, FollowsAServerThatComesAndGoes)
{
    const auto server = open();

    fake.start();
    ASSERT_TRUE(runUntil(loop, [&] { return server->available(); }));
    EXPECT_EQ(changes, 1);

    fake.stop();
    ASSERT_TRUE(runUntil(loop, [&] { return !server->available(); }));
    EXPECT_EQ(changes, 2);
}

TEST_F(NotificationServerTest, RequestsTheCapabilitiesOnce)
{
    fake.capabilities = {"body", "actions", "sound"};
    fake.start();
    const auto server = open();
    EXPECT_EQ(server->capabilities(), std::nullopt);

    server->prepare();
    server->prepare();
    ASSERT_TRUE(runUntil(loop, [&] { return readies > 0; }));
    server->prepare();

    EXPECT_EQ(server->capabilities(),
              (NotificationCapabilities{.actions = true, .bodyMarkup = false, .sound = true}));
    EXPECT_EQ(fake.capabilityCalls, 1);
}

TEST_F(NotificationServerTest, AssumesNoCapabilitiesAfterAnErrorOrNonsense)
{
    using Answer = FakeNotificationServer::Answer;
    for (const auto answer : {Answer::error, Answer::nonsense}) {
        readies = 0;
        fake.aboutCapabilities = answer;
        fake.start();
        const auto server = open();

        server->prepare();
        ASSERT_TRUE(runUntil(loop, [&] { return readies > 0; }));

        EXPECT_EQ(server->capabilities(), NotificationCapabilities{});
    }
}

TEST_F(NotificationServerTest, KnowsTheDesktopsThatTakePicturesOnlyByPath)
{
    fake.start();
    const auto takesPath = [this](const char* desktop) {
        (void)setenv("XDG_CURRENT_DESKTOP", desktop, 1);
        readies = 0;
        const auto server = open();
        server->prepare();
        EXPECT_TRUE(runUntil(loop, [&] { return readies > 0; }));
        return server->capabilities()->imagePath;
    };

    EXPECT_TRUE(takesPath("GNOME"));
    EXPECT_TRUE(takesPath("ubuntu:GNOME"));
    EXPECT_TRUE(takesPath("Budgie"));
    EXPECT_FALSE(takesPath("X-Cinnamon"));
    EXPECT_FALSE(takesPath("KDE"));
    EXPECT_FALSE(takesPath(""));
}

TEST_F(NotificationServerTest, RequestsTheCapabilitiesAgainFromTheNextServer)
{
    fake.aboutCapabilities = FakeNotificationServer::Answer::death;
    fake.start();
    const auto server = open();
    server->prepare();
    ASSERT_TRUE(runUntil(loop, [&] { return !server->available(); }));

    fake.aboutCapabilities = FakeNotificationServer::Answer::proper;
    fake.start();
    ASSERT_TRUE(runUntil(loop, [&] { return server->available(); }));
    EXPECT_EQ(server->capabilities(), std::nullopt);
    server->prepare();

    ASSERT_TRUE(runUntil(loop, [&] { return readies > 0; }));
    EXPECT_TRUE(server->capabilities()->actions);
    EXPECT_EQ(readies, 1);
}

TEST_F(NotificationServerTest, ForgetsTheCapabilitiesOfAServerThatIsGone)
{
    fake.start();
    const auto server = open();
    server->prepare();
    ASSERT_TRUE(runUntil(loop, [&] { return server->capabilities().has_value(); }));

    fake.stop();
    ASSERT_TRUE(runUntil(loop, [&] { return !server->available(); }));
    EXPECT_EQ(server->capabilities(), std::nullopt);
    fake.capabilities = {"body"};
    fake.start();
    ASSERT_TRUE(runUntil(loop, [&] { return server->available(); }));
    server->prepare();

    ASSERT_TRUE(runUntil(loop, [&] { return readies == 2; }));
    EXPECT_FALSE(server->capabilities()->actions);
}

TEST_F(NotificationServerTest, StartsTheServerAgainAfterItFailedToStart)
{
    const TemporaryFolder folder;
    const auto record = folder.path() / "starts";
    const auto command = "/bin/sh -c \"echo >> '" + record.string() + "'; exit 1\"";
    const PrivateBus other(std::vector{PrivateBus::Service{service, command}});
    session = other.connect(loop);
    const auto server = open();

    const auto starts = [&] {
        std::error_code missing;
        const auto size = std::filesystem::file_size(record, missing);
        return missing ? 0 : size;
    };

    // The first start has failed once a later request starts the server again.
    EXPECT_TRUE(runUntil(loop, [&] {
        server->prepare();
        return starts() >= 2;
    }));
    EXPECT_EQ(readies, 0);
}

TEST_F(NotificationServerTest, IsNotReadyWhenTheServerFailsToStart)
{
    const auto server = open();
    bus.add({.name = service, .command = "/bin/false"});
    ASSERT_TRUE(runUntil(loop, [&] { return server->available(); }));

    server->prepare();
    fake.start();
    ASSERT_TRUE(runUntil(loop, [&] { return !server->owner().empty(); }));

    EXPECT_EQ(readies, 0);
}

}  // namespace
}  // namespace vorlane::platform
