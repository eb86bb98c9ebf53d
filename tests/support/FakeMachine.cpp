#include "FakeMachine.h"

namespace vorlane {

FakeMachine::FakeMachine()
{
    describe();
}

Services FakeMachine::servicesWith(PowerSources& others)
{
    return {.powerSources = others,
            .batteryRegistry = batteryRegistry,
            .defaults = defaults,
            .files = files,
            .notifications = notifications,
            .alertPanel = alertPanel,
            .statusBar = statusBar,
            .windows = windows,
            .application = application,
            .loginItem = loginItem,
            .soundPlayer = soundPlayer,
            .workspace = workspace,
            .runLoop = runLoop,
            .clock = clock,
            .calendar = calendar,
            .texts = texts};
}

void FakeMachine::plugIn()
{
    plugged = true;
    notify();
}

void FakeMachine::unplug()
{
    plugged = false;
    notify();
}

void FakeMachine::charge(std::int64_t next)
{
    percent = next;
    notify();
}

void FakeMachine::minutesLeft(std::int64_t next)
{
    minutes = next;
    notify();
}

void FakeMachine::wear(std::int64_t healthPercent)
{
    health = healthPercent;
    notify();
}

void FakeMachine::removeBattery()
{
    present = false;
    notify();
}

void FakeMachine::insertBattery()
{
    present = true;
    notify();
}

void FakeMachine::advance(Seconds span)
{
    if (asleep) {
        clock.time = clock.time + span;
        return;
    }
    runLoop.advance(span);
}

void FakeMachine::sleep()
{
    workspace.willSleep();
    runLoop.settle();
    asleep = true;
}

void FakeMachine::wake()
{
    asleep = false;
    workspace.didWake();
    runLoop.settle();
}

void FakeMachine::notify()
{
    describe();
    if (asleep) return;
    powerSources.change();
    runLoop.settle();
}

void FakeMachine::describe()
{
    powerSources.sources.clear();
    batteryRegistry.entry.reset();
    if (!present) return;

    const bool charging = plugged && percent < 100;
    powerSources.sources.push_back(
        {{"Type", std::string("InternalBattery")},
         {"Is Present", true},
         {"Current Capacity", percent},
         {"Max Capacity", std::int64_t{100}},
         {"Is Charging", charging},
         {"Is Charged", plugged && !charging},
         {"Power Source State", std::string(plugged ? "AC Power" : "Battery Power")},
         {"Name", std::string("BAT0")},
         {"Time to Full Charge", charging ? minutes : -1},
         {"Time to Empty", plugged ? -1 : minutes}});
    batteryRegistry.entry = {{"CycleCount", std::int64_t{120}},
                             {"DesignCapacity", std::int64_t{5000}},
                             {"MaxCapacity", std::int64_t{50} * health}};
}

}  // namespace vorlane
