#include "App/Prefs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/support/FakeClock.h"
#include "tests/support/MemoryDefaults.h"
#include "tests/support/Printing.h"

namespace vorlane {
namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;
using namespace std::chrono_literals;

DefaultsValue whole(std::int64_t number)
{
    return number;
}

DefaultsValue text(const char* words)
{
    return std::string(words);
}

auto soundsAre(const char* chargeLimit, const char* low, const char* tooLong, const char* health)
{
    return ElementsAre(Pair(AlertKind::chargeLimit, chargeLimit), Pair(AlertKind::low, low),
                       Pair(AlertKind::tooLong, tooLong), Pair(AlertKind::health, health));
}

class PrefsTest : public testing::Test {
protected:
    MemoryDefaults store;
};

TEST_F(PrefsTest, ReadsAFreshStoreAsTheDefaults)
{
    const auto fresh = Prefs::current(store);

    EXPECT_TRUE(fresh.limitEnabled && fresh.repeatReminder && fresh.lowEnabled);
    EXPECT_TRUE(fresh.longEnabled && fresh.healthEnabled && fresh.showPercent);
    EXPECT_FALSE(fresh.quietEnabled || fresh.showTime);
    EXPECT_EQ(fresh.limit, 80);
    EXPECT_EQ(fresh.low, 20);
    EXPECT_EQ(fresh.longHours, 8);
    EXPECT_EQ(fresh.quietStart, 1320);
    EXPECT_EQ(fresh.quietEnd, 420);
    EXPECT_THAT(fresh.sounds, soundsAre("default", "default", "default", "default"));
}

TEST_F(PrefsTest, RegistersTheSeventeenKeys)
{
    EXPECT_THAT(
        Prefs::defaults(),
        UnorderedElementsAre(
            Pair("limitEnabled", DefaultsValue(true)), Pair("limit", whole(80)),
            Pair("repeatReminder", DefaultsValue(true)), Pair("limitSound", text("default")),
            Pair("lowEnabled", DefaultsValue(true)), Pair("low", whole(20)),
            Pair("lowSound", text("default")), Pair("longEnabled", DefaultsValue(true)),
            Pair("longHours", whole(8)), Pair("longSound", text("default")),
            Pair("healthEnabled", DefaultsValue(true)), Pair("healthSound", text("default")),
            Pair("quietEnabled", DefaultsValue(false)), Pair("quietStart", whole(1320)),
            Pair("quietEnd", whole(420)), Pair("showPercent", DefaultsValue(true)),
            Pair("showTime", DefaultsValue(false))));
}

TEST_F(PrefsTest, RegistersTheDefaultsAtEachRead)
{
    (void)Prefs::current(store);
    store.registered.clear();

    EXPECT_EQ(Prefs::current(store).limit, 80);
    EXPECT_EQ(store.registered, Prefs::defaults());
}

TEST_F(PrefsTest, WritesNothingWhenItReads)
{
    (void)Prefs::current(store);
    (void)Prefs::snoozeUntil(store, mondayMorning);

    EXPECT_TRUE(store.values.empty());
}

TEST_F(PrefsTest, ReadsEachBoolFromItsOwnKey)
{
    const std::map<std::string, bool Prefs::*> fields{
        {"limitEnabled", &Prefs::limitEnabled},   {"repeatReminder", &Prefs::repeatReminder},
        {"lowEnabled", &Prefs::lowEnabled},       {"longEnabled", &Prefs::longEnabled},
        {"healthEnabled", &Prefs::healthEnabled}, {"quietEnabled", &Prefs::quietEnabled},
        {"showPercent", &Prefs::showPercent},     {"showTime", &Prefs::showTime}};
    for (const auto& [changed, unused] : fields) {
        store.values.clear();
        const auto before = Prefs::current(store);
        const bool flipped = !(before.*fields.at(changed));
        store.set(changed, flipped);

        const auto after = Prefs::current(store);

        for (const auto& [key, field] : fields) {
            EXPECT_EQ(after.*field, key == changed ? flipped : before.*field) << key;
        }
    }
}

TEST_F(PrefsTest, ReadsEachNumberFromItsOwnKey)
{
    store.set("limit", whole(1));
    store.set("low", whole(2));
    store.set("longHours", whole(3));
    store.set("quietStart", whole(4));
    store.set("quietEnd", whole(5));

    const auto current = Prefs::current(store);

    EXPECT_EQ(current.limit, 1);
    EXPECT_EQ(current.low, 2);
    EXPECT_EQ(current.longHours, 3);
    EXPECT_EQ(current.quietStart, 4);
    EXPECT_EQ(current.quietEnd, 5);
}

TEST_F(PrefsTest, ReadsEachSoundFromItsOwnKey)
{
    store.set("limitSound", text("Glass"));
    store.set("lowSound", text("none"));
    store.set("longSound", text("Ping"));
    store.set("healthSound", text("Hero"));

    EXPECT_THAT(Prefs::current(store).sounds, soundsAre("Glass", "none", "Ping", "Hero"));
}

TEST_F(PrefsTest, KeepsNumbersOutOfRange)
{
    store.set("limit", whole(150));
    store.set("low", whole(std::numeric_limits<std::int64_t>::min()));
    store.set("longHours", whole(-8));
    store.set("quietStart", whole(1440));
    store.set("quietEnd", whole(std::numeric_limits<std::int64_t>::max()));

    const auto current = Prefs::current(store);

    EXPECT_EQ(current.limit, 150);
    EXPECT_EQ(current.low, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(current.longHours, -8);
    EXPECT_EQ(current.quietStart, 1440);
    EXPECT_EQ(current.quietEnd, std::numeric_limits<std::int64_t>::max());
}

TEST_F(PrefsTest, KeepsAnUnknownSound)
{
    store.set("limitSound", text("Trombone"));
    store.set("lowSound", text(""));

    EXPECT_THAT(Prefs::current(store).sounds, soundsAre("Trombone", "", "default", "default"));
}

TEST_F(PrefsTest, ReadsAValueOfTheWrongTypeAsFalseOrZero)
{
    for (const auto& [key, value] : Prefs::defaults()) {
        const bool isString = std::holds_alternative<std::string>(value);
        store.set(key, isString ? whole(7) : text("7"));
    }

    const auto current = Prefs::current(store);

    EXPECT_FALSE(current.limitEnabled || current.repeatReminder || current.lowEnabled);
    EXPECT_FALSE(current.longEnabled || current.healthEnabled || current.quietEnabled);
    EXPECT_FALSE(current.showPercent || current.showTime);
    EXPECT_EQ(current.limit, 0);
    EXPECT_EQ(current.low, 0);
    EXPECT_EQ(current.longHours, 0);
    EXPECT_EQ(current.quietStart, 0);
    EXPECT_EQ(current.quietEnd, 0);
    EXPECT_THAT(current.sounds, soundsAre("default", "default", "default", "default"));
}

TEST_F(PrefsTest, OffersFourteenSounds)
{
    EXPECT_THAT(Prefs::soundNames,
                ElementsAre("Glass", "Ping", "Hero", "Submarine", "Funk", "Basso", "Blow", "Bottle",
                            "Frog", "Morse", "Pop", "Purr", "Sosumi", "Tink"));
}

TEST_F(PrefsTest, HasNoSnoozeUntilOneIsStored)
{
    EXPECT_EQ(Prefs::snoozeUntil(store, mondayMorning), std::nullopt);
}

TEST_F(PrefsTest, ReadsASnoozeDeadlineInTheFuture)
{
    Prefs::setSnoozeUntil(store, mondayMorning + 1s);

    EXPECT_EQ(Prefs::snoozeUntil(store, mondayMorning), mondayMorning + 1s);
    EXPECT_EQ(Prefs::snoozeUntil(store, mondayMorning + 1s), std::nullopt);
    EXPECT_EQ(Prefs::snoozeUntil(store, mondayMorning + 2s), std::nullopt);
}

TEST_F(PrefsTest, StoresTheSnoozeDeadlineAsARealNumberOfSeconds)
{
    Prefs::setSnoozeUntil(store, Date{1767603600.25});

    EXPECT_EQ(store.values.at("snoozeUntil"), DefaultsValue(1767603600.25));
}

TEST_F(PrefsTest, KeepsAnExpiredDeadlineInTheStore)
{
    Prefs::setSnoozeUntil(store, mondayMorning);

    (void)Prefs::snoozeUntil(store, mondayMorning + 1h);

    EXPECT_EQ(store.doubleForKey("snoozeUntil"), mondayMorning.secondsSince1970);
}

TEST_F(PrefsTest, StoresAWholeZeroWhenTheSnoozeIsCleared)
{
    Prefs::setSnoozeUntil(store, mondayMorning + 1h);

    Prefs::setSnoozeUntil(store, std::nullopt);

    EXPECT_EQ(store.values.at("snoozeUntil"), whole(0));
    EXPECT_EQ(Prefs::snoozeUntil(store, mondayMorning), std::nullopt);
}

TEST_F(PrefsTest, ReadsADeadlineWrittenAsAWholeNumber)
{
    store.set("snoozeUntil", whole(1767603601));

    EXPECT_EQ(Prefs::snoozeUntil(store, mondayMorning), mondayMorning + 1s);
}

TEST_F(PrefsTest, AcceptsAnInfiniteSnooze)
{
    store.set("snoozeUntil", std::numeric_limits<double>::infinity());

    EXPECT_EQ(Prefs::snoozeUntil(store, mondayMorning),
              Date{std::numeric_limits<double>::infinity()});
}

TEST_F(PrefsTest, HasNoSnoozeIfTheStoredDeadlineIsInvalid)
{
    for (const auto& odd : {text("tomorrow"), DefaultsValue(true), whole(-1),
                            DefaultsValue(std::numeric_limits<double>::quiet_NaN()),
                            DefaultsValue(-std::numeric_limits<double>::infinity())}) {
        store.set("snoozeUntil", odd);
        EXPECT_EQ(Prefs::snoozeUntil(store, mondayMorning), std::nullopt);
    }
}

}  // namespace
}  // namespace vorlane
