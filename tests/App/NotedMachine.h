// A fake laptop whose services record the order of the calls to them.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/FakeMachine.h"

namespace vorlane {

// Records each entry once, at its first occurrence.
class Journal {
public:
    std::vector<std::string> entries;

    void note(const std::string& entry)
    {
        if (std::ranges::find(entries, entry) == entries.end()) entries.push_back(entry);
    }
};

struct NotedPowerSources : FakePowerSources {
    explicit NotedPowerSources(Journal& notes) : journal(notes) {}

    std::vector<PropertyDictionary> descriptions() override
    {
        journal.note("reading");
        return FakePowerSources::descriptions();
    }

    Subscription observe(std::function<void()> changed) override
    {
        journal.note("power changes");
        return FakePowerSources::observe(std::move(changed));
    }

    Journal& journal;
};

struct NotedDefaults : MemoryDefaults {
    explicit NotedDefaults(Journal& notes) : journal(notes) {}

    void registerDefaults(const std::map<std::string, DefaultsValue>& defaults) override
    {
        journal.note("defaults");
        MemoryDefaults::registerDefaults(defaults);
    }

    Subscription observe(std::function<void()> changed) override
    {
        journal.note("settings changes");
        return MemoryDefaults::observe(std::move(changed));
    }

    Journal& journal;
};

struct NotedNotifications : FakeNotificationCenter {
    explicit NotedNotifications(Journal& notes) : journal(notes) {}

    void setDelegate(std::weak_ptr<NotificationDelegate> next) override
    {
        journal.note("notifications");
        FakeNotificationCenter::setDelegate(std::move(next));
    }

    Journal& journal;
};

struct NotedStatusItem : FakeStatusItem {
    explicit NotedStatusItem(Journal& notes) : journal(notes) {}

    void show(const StatusItemContent& next) override
    {
        journal.note("drawing");
        FakeStatusItem::show(next);
    }

    Journal& journal;
};

struct NotedStatusBar : StatusBar {
    explicit NotedStatusBar(Journal& notes) : item(notes) {}

    StatusItem* statusItem() override
    {
        item.journal.note("status item");
        return &item;
    }

    NotedStatusItem item;
};

struct NotedApplication : FakeApplication {
    explicit NotedApplication(Journal& notes) : journal(notes) {}

    void setAccessory() override { journal.note("accessory"); }

    Journal& journal;
};

struct NotedWorkspace : FakeWorkspace {
    explicit NotedWorkspace(Journal& notes) : journal(notes) {}

    Subscription observeWillSleep(std::function<void()> listener) override
    {
        journal.note("sleep");
        return FakeWorkspace::observeWillSleep(std::move(listener));
    }

    Subscription observeDidWake(std::function<void()> listener) override
    {
        journal.note("wake");
        return FakeWorkspace::observeDidWake(std::move(listener));
    }

    Journal& journal;
};

struct NotedRunLoop : FakeRunLoop {
    NotedRunLoop(FakeClock& clock, Journal& notes) : FakeRunLoop(clock), journal(notes) {}

    Subscription repeat(Rhythm rhythm, std::function<void()> work) override
    {
        journal.note("timer");
        return FakeRunLoop::repeat(rhythm, std::move(work));
    }

    Journal& journal;
};

// Services without a recording version are taken from `FakeMachine`.
struct NotedMachine : FakeMachine {
    Journal journal;
    NotedPowerSources notedPowerSources{journal};
    NotedDefaults notedDefaults{journal};
    NotedNotifications notedNotifications{journal};
    NotedStatusBar notedStatusBar{journal};
    NotedApplication notedApplication{journal};
    NotedWorkspace notedWorkspace{journal};
    NotedRunLoop notedRunLoop{clock, journal};

    Services services()
    {
        return {.powerSources = notedPowerSources,
                .batteryRegistry = batteryRegistry,
                .defaults = notedDefaults,
                .files = files,
                .notifications = notedNotifications,
                .alertPanel = alertPanel,
                .statusBar = notedStatusBar,
                .windows = windows,
                .application = notedApplication,
                .loginItem = loginItem,
                .soundPlayer = soundPlayer,
                .workspace = notedWorkspace,
                .runLoop = notedRunLoop,
                .clock = clock,
                .calendar = calendar,
                .texts = texts};
    }
};

}  // namespace vorlane
