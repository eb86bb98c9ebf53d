#include "tests/platform/linux/support/Impostor.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/power/UPowerEstimates.h"
#include "platform/linux/session/LogindWorkspace.h"
#include "platform/linux/tray/TrayHost.h"
#include "platform/linux/tray/TrayRegistration.h"
#include "platform/linux/windows/PortalAppearance.h"
#include "tests/platform/linux/notifications/NotificationCenterFixture.h"
#include "tests/platform/linux/power/FakeUPower.h"
#include "tests/platform/linux/session/FakeLogind.h"
#include "tests/platform/linux/support/ProcessName.h"
#include "tests/platform/linux/tray/FakeWatcher.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NotificationImpostorTest : public NotificationCenterFixture {
protected:
    Impostor impostor{bus, loop, session.get()};

    void showOne()
    {
        openWithServer();
        center->add(request("one"));
        ASSERT_TRUE(untilReceived(1));
        settle();
    }

    void invokeSnooze() const
    {
        impostor.send({"/org/freedesktop/Notifications", service, "ActionInvoked"}, "us",
                      server.lastId, "SNOOZE");
    }
};

TEST_F(NotificationImpostorTest, CannotInvokeAnAction)
{
    showOne();

    invokeSnooze();
    impostor.settle();

    EXPECT_THAT(receiver->actions, IsEmpty());
    server.invoke(server.lastId, "SNOOZE");
    EXPECT_TRUE(runUntil(loop, [&] { return receiver->actions.size() == 1; }));
}

TEST_F(NotificationImpostorTest, CannotPoseAsTheServer)
{
    showOne();

    impostor.sendOwnerChange(service, "", impostor.name());
    impostor.settle();
    center->add(request("two"));

    ASSERT_TRUE(untilReceived(2));
    EXPECT_EQ(server.capabilityCalls, 1);  // no new server was asked
}

TEST_F(NotificationImpostorTest, CannotReportTheServerAsGone)
{
    showOne();

    impostor.sendOwnerChange(service, impostor.name(), "");
    impostor.settle();

    EXPECT_TRUE(center->available());
    center->removeDelivered("one");
    settle();
    EXPECT_THAT(server.closed, ElementsAre(server.lastId));
}

TEST_F(NotificationImpostorTest, IsIgnoredAfterItLostTheNameToAnotherServer)
{
    showOne();
    FakeNotificationServer next{bus, loop};
    const BusPointer former(sd_bus_ref(server.bus()));
    ASSERT_GE(sd_bus_release_name(former.get(), service), 0);
    next.start();
    settle();
    center->add(request("two"));
    ASSERT_TRUE(runUntil(loop, [&] { return next.received.size() == 1; }));
    settle();
    ASSERT_EQ(next.lastId, server.lastId);

    server.invoke(server.lastId, "SNOOZE");
    roundTrip(loop, former.get());
    settle();

    EXPECT_THAT(receiver->actions, IsEmpty());
    next.invoke(next.lastId, "SNOOZE");
    EXPECT_TRUE(runUntil(loop, [&] { return receiver->actions.size() == 1; }));
}

class BusImpostorTest : public testing::Test {
protected:
    SdEventRunLoop loop;
    PrivateBus bus;
    BusPointer victim = bus.connect(loop);
    Impostor impostor{bus, loop, victim.get()};
};

TEST_F(BusImpostorTest, CannotGiveEstimates)
{
    FakeUPower upower(bus, loop);
    upower.properties = {{"State", 'u', 2}, {"TimeToEmpty", 'x', 3600}};
    UPowerEstimates estimates(victim.get(), [] { return Seconds{1000}; });
    const auto toEmpty = [&] { return estimates.estimate(ChargeStatus::discharging); };
    ASSERT_TRUE(runUntil(loop, [&] { return toEmpty() == 60; }));

    impostor.sendOwnerChange("org.freedesktop.UPower", "", impostor.name());
    impostor.settle();
    impostor.send({"/org/freedesktop/UPower/devices/DisplayDevice",
                   "org.freedesktop.DBus.Properties", "PropertiesChanged"},
                  "sa{sv}as", "org.freedesktop.UPower.Device", 1, "TimeToEmpty", "x",
                  std::int64_t{60}, 0);
    impostor.settle();

    EXPECT_EQ(toEmpty(), 60);
    EXPECT_EQ(upower.questions, 1);
}

TEST_F(BusImpostorTest, CannotAnnounceSleepOrWakeUp)
{
    FakeLogind logind(bus, loop);
    LogindWorkspace workspace(victim.get());
    std::vector<std::string> events;
    const auto asleep = workspace.observeWillSleep([&] { events.emplace_back("sleep"); });
    const auto awake = workspace.observeDidWake([&] { events.emplace_back("wake"); });
    ASSERT_TRUE(runUntil(loop, [&] { return logind.isLockHeld(); }));
    impostor.settle();

    for (const int goingToSleep : {1, 0}) {
        impostor.send(
            {"/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep"}, "b",
            goingToSleep);
    }
    impostor.sendOwnerChange("org.freedesktop.login1", "", impostor.name());
    impostor.settle();

    EXPECT_THAT(events, IsEmpty());
    EXPECT_TRUE(logind.isLockHeld());
    EXPECT_EQ(logind.locksGiven, 1);
}

TEST_F(BusImpostorTest, CannotPoseAsTheTray)
{
    const ProcessName process("waybar");
    const auto desktop = bus.connect(loop);
    FakeWatcher watcher(desktop.get());
    watcher.appear();
    std::vector<bool> reports;
    TrayHost host(victim.get(), [] {});
    TrayRegistration registration(victim.get(), loop);
    registration.onWatcher([&](bool present) { reports.push_back(present); });
    ASSERT_TRUE(runUntil(loop, [&] { return !reports.empty(); }));
    impostor.settle();
    reports.clear();
    const auto registered = watcher.items.size();

    impostor.sendOwnerChange(FakeWatcher::name, impostor.name(), "");
    impostor.sendOwnerChange(FakeWatcher::name, "", impostor.name());
    impostor.settle();

    EXPECT_THAT(reports, IsEmpty());
    EXPECT_EQ(watcher.items.size(), registered);
}

TEST_F(BusImpostorTest, CannotChangeTheAppearance)
{
    const auto desktop = bus.connect(loop);
    ASSERT_GT(sd_bus_request_name(desktop.get(), "org.freedesktop.portal.Desktop", 0), 0);
    int changes = 0;
    const PortalAppearance appearance(victim.get(), [&](const Appearance&) { ++changes; });
    impostor.settle();

    impostor.sendOwnerChange("org.freedesktop.portal.Desktop", "", impostor.name());
    impostor.send(
        {"/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged"},
        "ssv", "org.freedesktop.appearance", "color-scheme", "u", 1U);
    impostor.settle();

    EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace vorlane::platform
