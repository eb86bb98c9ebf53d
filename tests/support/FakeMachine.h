// A simulated laptop, whose events reach the program through the fake services.
#pragma once

#include "App/services/Services.h"
#include "FakeAlertPanel.h"
#include "FakeApplication.h"
#include "FakeBatteryRegistry.h"
#include "FakeCalendar.h"
#include "FakeClock.h"
#include "FakeLoginItem.h"
#include "FakeNotificationCenter.h"
#include "FakePowerSources.h"
#include "FakeRunLoop.h"
#include "FakeSoundPlayer.h"
#include "FakeStatusBar.h"
#include "FakeWindows.h"
#include "FakeWorkspace.h"
#include "MemoryDefaults.h"
#include "MemoryFiles.h"

namespace vorlane {

// Starts on battery at 50%, with a healthy battery.
class FakeMachine {
public:
    static constexpr const char* historyFile = "/home/user/share/Vorlane/history.json";

    FakeClock clock;
    FakeCalendar calendar;
    PlatformTexts texts;
    FakeRunLoop runLoop{clock};
    FakePowerSources powerSources;
    FakeBatteryRegistry batteryRegistry;
    MemoryDefaults defaults;
    MemoryFiles files;
    FakeNotificationCenter notifications;
    FakeAlertPanel alertPanel;
    FakeStatusBar statusBar;
    FakeWindows windows;
    FakeApplication application;
    FakeLoginItem loginItem;
    FakeSoundPlayer soundPlayer;
    FakeWorkspace workspace;

    FakeMachine();

    Services services() { return servicesWith(powerSources); }
    Services servicesWith(PowerSources& others);

    // Each change notifies the program and then runs the work it queued on the loop.
    void plugIn();
    void unplug();
    void charge(std::int64_t percent);
    void minutesLeft(std::int64_t minutes);  // to full while charging, else to empty
    void wear(std::int64_t healthPercent);
    void removeBattery();
    void insertBattery();

    // Lets time pass. During sleep only the clock advances; timers do not fire.
    void advance(Seconds span);
    void sleep();
    void wake();

private:
    void notify();
    void describe();

    std::int64_t percent = 50;
    std::int64_t health = 95;
    std::int64_t minutes = -1;
    bool plugged = false;
    bool present = true;
    bool asleep = false;
};

}  // namespace vorlane
