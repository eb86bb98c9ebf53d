// A notification center on a private bus with a fake server.
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/notifications/FreedesktopNotificationCenter.h"
#include "tests/platform/linux/notifications/FakeNotificationServer.h"
#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/support/FakeSoundPlayer.h"

namespace vorlane::platform {

class Receiver : public NotificationDelegate {
public:
    std::vector<std::string> actions;

    PresentationOptions willPresent() override { return {}; }

    void didReceive(const std::string& action, const std::function<void()>& completion) override
    {
        actions.push_back(action);
        completion();
    }
};

inline NotificationRequest request(const std::string& identifier,
                                   const std::string& title = "Title")
{
    return {.identifier = identifier,
            .title = title,
            .body = "A <b> & c",
            .categoryIdentifier = "VL_ALERT",
            .sound = "default"};
}

class NotificationCenterFixture : public testing::Test {
protected:
    using Answer = FakeNotificationServer::Answer;

    static constexpr const char* service = "org.freedesktop.Notifications";

    SdEventRunLoop loop;
    PrivateBus bus;
    BusPointer session = bus.connect(loop);
    FakeNotificationServer server{bus, loop};
    FakeSoundPlayer player;
    std::shared_ptr<Receiver> receiver = std::make_shared<Receiver>();
    std::unique_ptr<FreedesktopNotificationCenter> center;

    void open(const NotificationHandover& inherited = {})
    {
        center = std::make_unique<FreedesktopNotificationCenter>(
            FreedesktopNotificationCenter::Dependencies{.session = session.get(),
                                                        .sounds = SoundFiles("/nowhere"),
                                                        .player = player,
                                                        .inherited = inherited});
        center->setDelegate(receiver);
        center->setCategories({{.identifier = "VL_ALERT",
                                .actions = {{.identifier = "SNOOZE", .title = "Snooze 1 hour"}}}});
    }

    void openWithServer()
    {
        server.start();
        open();
    }

    bool untilReceived(std::size_t count)
    {
        return runUntil(loop, [&] { return server.received.size() >= count; });
    }

    bool untilAvailable(bool available)
    {
        return runUntil(loop, [&] { return center->available() == available; });
    }

    // Waits until all messages sent so far have arrived, in both directions, and their answers too.
    void settle()
    {
        for (int round = 0; round < 3; ++round) {
            roundTrip(loop, session.get());
            if (server.bus()) roundTrip(loop, server.bus());
        }
    }

    std::vector<std::string> titles() const
    {
        std::vector<std::string> titles;
        for (const auto& notification : server.received) titles.push_back(notification.title);
        return titles;
    }
};

}  // namespace vorlane::platform
