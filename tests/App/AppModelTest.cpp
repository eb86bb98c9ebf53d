#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/App/AppModelFixture.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::chrono_literals;

using AppModelTest = AppModelFixture;

// Construction and start

TEST_F(AppModelTest, StartsWithEmptyFields)
{
    const auto model = makeModel();

    EXPECT_EQ(model->state.get(), BatteryState{});
    EXPECT_EQ(model->pluggedSince.get(), std::nullopt);
    EXPECT_EQ(model->historyVersion.get(), 0);
    EXPECT_EQ(model->snoozeUntil.get(), std::nullopt);
    EXPECT_EQ(model->engine.chargeSent, 0);
}

TEST_F(AppModelTest, LoadsTheHistoryWhenConstructed)
{
    writeHistory({plugged(start - 1h)});

    EXPECT_THAT(makeModel()->history.samples, ElementsAre(plugged(start - 1h)));
}

TEST_F(AppModelTest, ReadsAStoredSnoozeWhenConstructed)
{
    machine.defaults.set("snoozeUntil", (start + 10min).secondsSince1970);
    EXPECT_EQ(makeModel()->snoozeUntil.get(), start + 10min);

    machine.defaults.set("snoozeUntil", start.secondsSince1970);
    EXPECT_EQ(makeModel()->snoozeUntil.get(), std::nullopt);
}

TEST_F(AppModelTest, DoesNothingBeforeStart)
{
    const auto model = makeModel();

    machine.plugIn();
    machine.advance(10min);
    machine.sleep();
    machine.wake();
    machine.advance(10s);

    EXPECT_EQ(model->historyVersion.get(), 0);
    EXPECT_EQ(machine.files.replacements, 0);
}

// What triggers a refresh

TEST_F(AppModelTest, RefreshesOnceAtStart)
{
    const auto model = launch();

    EXPECT_EQ(model->historyVersion.get(), 1);
    EXPECT_EQ(model->state.get().percent, 50);
    EXPECT_THAT(model->history.samples, SizeIs(1));
}

TEST_F(AppModelTest, BecomesTheNotificationDelegateAtStart)
{
    const auto model = launch();

    EXPECT_EQ(machine.notifications.delegate.lock(), model->notifier);
    EXPECT_THAT(machine.notifications.categories, SizeIs(1));
    EXPECT_THAT(machine.notifications.prompts, IsEmpty());
}

TEST_F(AppModelTest, RefreshesAtEachChangeOfThePowerSources)
{
    const auto model = launch();

    machine.charge(49);
    machine.charge(49);

    EXPECT_EQ(model->historyVersion.get(), 3);
    EXPECT_EQ(model->state.get().percent, 49);
}

TEST_F(AppModelTest, RecordsNothingOnASignalWithoutAChange)
{
    const auto model = launch();
    machine.advance(10s);

    machine.powerSources.change();

    EXPECT_EQ(model->historyVersion.get(), 2);
    EXPECT_THAT(model->history.samples, SizeIs(1));
}

TEST_F(AppModelTest, PostsRemindersThatBecomeDueOnASignal)
{
    const auto model = launch();

    machine.charge(20);

    EXPECT_THAT(posted(), ElementsAre("low"));
}

TEST_F(AppModelTest, RefreshesEveryMinute)
{
    const auto model = launch();

    machine.advance(60s - 1ms);
    EXPECT_EQ(model->historyVersion.get(), 1);
    machine.advance(1ms);
    EXPECT_EQ(model->historyVersion.get(), 2);
    machine.advance(10min);
    EXPECT_EQ(model->historyVersion.get(), 12);
}

TEST_F(AppModelTest, AllowsItsTimerToBeTenSecondsLate)
{
    machine.runLoop.lazy = true;
    const auto model = launch();

    machine.advance(70s - 1ms);
    EXPECT_EQ(model->historyVersion.get(), 1);
    machine.advance(1ms);
    EXPECT_EQ(model->historyVersion.get(), 2);
}

TEST_F(AppModelTest, SavesTheHistoryBeforeTheMachineSleeps)
{
    const auto model = launch();
    machine.advance(10s);
    machine.charge(49);

    machine.sleep();

    EXPECT_EQ(decodeSamples(machine.files.contents.at(FakeMachine::historyFile)),
              model->history.samples);
    EXPECT_THAT(model->history.samples, SizeIs(2));
    EXPECT_EQ(model->history.lastSave, start + 10s);
}

TEST_F(AppModelTest, RefreshesThreeSecondsAfterTheMachineWakes)
{
    const auto model = launch();
    machine.sleep();
    machine.advance(8h);
    machine.wake();
    EXPECT_EQ(model->historyVersion.get(), 1);

    machine.advance(3s - 1ms);
    EXPECT_EQ(model->historyVersion.get(), 1);
    machine.advance(1ms);
    EXPECT_EQ(model->historyVersion.get(), 2);
    EXPECT_EQ(model->history.samples.back().t, (start + 8h + 3s).secondsSince1970);
}

// What a refresh does

TEST_F(AppModelTest, ReadsTheClockOnceAfterTheBattery)
{
    // A service that takes five seconds to answer.
    class SlowSources : public FakePowerSources {
    public:
        explicit SlowSources(FakeClock& clock) : clock_(clock) {}

        std::vector<PropertyDictionary> descriptions() override
        {
            clock_.time = clock_.time + 5s;
            return sources;
        }

    private:
        FakeClock& clock_;
    };
    machine.plugIn();
    SlowSources slow(machine.clock);
    slow.sources = machine.powerSources.sources;
    auto model = std::make_shared<AppModel>(machine.servicesWith(slow));

    model->refresh(Reason::change);

    EXPECT_EQ(model->pluggedSince.get(), start + 5s);
    EXPECT_THAT(model->history.samples, ElementsAre(plugged(start + 5s)));
}

TEST_F(AppModelTest, AnnouncesTheStateOnlyWhenTheReadingChanges)
{
    const auto model = launch();
    int announced = 0;
    const auto subscription = model->state.subscribe([&] { ++announced; });

    model->refresh(Reason::change);
    machine.advance(5min);
    EXPECT_EQ(announced, 0);

    machine.charge(49);
    EXPECT_EQ(announced, 1);
}

TEST_F(AppModelTest, AnnouncesTheStateBeforeStoringIt)
{
    const auto model = launch();
    std::int64_t read = 0;
    const auto subscription = model->state.subscribe([&] { read = model->state.get().percent; });

    machine.charge(49);

    EXPECT_EQ(read, 50);
    EXPECT_EQ(model->state.get().percent, 49);
}

TEST_F(AppModelTest, BumpsTheHistoryVersionAtEachRefresh)
{
    const auto model = makeModel();
    int announced = 0;
    const auto subscription = model->historyVersion.subscribe([&] { ++announced; });

    for (const auto reason : {Reason::launch, Reason::change, Reason::timer, Reason::wake}) {
        model->refresh(reason);
    }

    EXPECT_EQ(model->historyVersion.get(), 4);
    EXPECT_EQ(announced, 4);
}

TEST_F(AppModelTest, ForcesASampleExceptOnAChange)
{
    const std::vector<std::pair<Reason, bool>> forced{{Reason::launch, true},
                                                      {Reason::change, false},
                                                      {Reason::timer, true},
                                                      {Reason::wake, true}};
    const auto model = launch();
    for (const auto& [reason, isForced] : forced) {
        const auto before = model->history.samples.size();
        machine.advance(1s);

        model->refresh(reason);

        EXPECT_EQ(model->history.samples.size(), before + (isForced ? 1 : 0));
    }
}

TEST_F(AppModelTest, ReadsTheSettingsAtEachRefresh)
{
    const auto model = launch();
    machine.plugIn();
    machine.charge(70);
    EXPECT_THAT(posted(), IsEmpty());

    machine.defaults.set("limit", std::int64_t{70});
    EXPECT_THAT(posted(), IsEmpty());
    model->refresh(Reason::change);

    EXPECT_THAT(posted(), ElementsAre("chargeLimit"));
}

TEST_F(AppModelTest, DeletesTheHistoryOnReset)
{
    const auto model = launch();
    machine.plugIn();
    machine.charge(80);
    const auto state = model->state.get();
    const auto version = model->historyVersion.get();
    machine.advance(10s);

    model->resetHistory();

    EXPECT_THAT(model->history.samples, IsEmpty());
    EXPECT_EQ(machine.files.contents.at(FakeMachine::historyFile), "[]");
    EXPECT_EQ(model->history.lastSave, start + 10s);
    EXPECT_EQ(model->historyVersion.get(), version + 1);
    EXPECT_EQ(model->state.get(), state);
    EXPECT_EQ(model->pluggedSince.get(), start);
    EXPECT_EQ(model->engine.chargeSent, 1);
}

}  // namespace
}  // namespace vorlane
