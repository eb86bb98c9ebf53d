#include "platform/linux/tray/StatusMenu.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/platform/linux/support/PrivateBus.h"
#include "tests/platform/linux/tray/TrayClient.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeRunLoop.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class StatusMenuTest : public testing::Test {
protected:
    PrivateBus bus;
    SdEventRunLoop busLoop;
    FakeClock clock;
    FakeRunLoop runLoop{clock};
    BusPointer session = bus.connect(busLoop);
    BusPointer desktop = bus.connect(busLoop);
    std::unique_ptr<StatusMenu> menu = std::make_unique<StatusMenu>(session.get(), runLoop);
    TrayClient tray{
        busLoop,
        desktop.get(),
        {.owner = session.get(), .path = StatusMenu::path, .interface = "com.canonical.dbusmenu"}};
    std::vector<MenuItem> entries{{.action = MenuAction::none, .title = "Fully charged"},
                                  {.action = MenuAction::none, .title = ""},
                                  {.action = MenuAction::snooze, .title = "Snooze 1 hour"},
                                  {.action = MenuAction::quit, .title = "Quit"}};
    std::vector<MenuAction> chosen;

    // An id combines the entry's position and action.
    static constexpr std::int32_t stateId = 1;
    static constexpr std::int32_t separatorId = 9;
    static constexpr std::int32_t snoozeId = 19;
    static constexpr std::int32_t quitId = 30;

    void SetUp() override
    {
        menu->onMenu([this](MenuAction action) { chosen.push_back(action); });
        menu->show(entries);
        tray.settle();
        tray.signals.clear();
    }
};

TEST_F(StatusMenuTest, ReturnsItsLayout)
{
    EXPECT_EQ(tray.call("GetLayout", "iias", 0, -1, 0),
              "(2u, (0, {'children-display': <'submenu'>}, ["
              "<(1, {'label': <'Fully charged'>, 'enabled': <false>}, [])>, "
              "<(9, {'type': <'separator'>}, [])>, "
              "<(19, {'label': <'Snooze 1 hour'>, 'enabled': <true>}, [])>, "
              "<(30, {'label': <'Quit'>, 'enabled': <true>}, [])>]))");
}

TEST_F(StatusMenuTest, ReturnsAsManyLevelsAsRequested)
{
    const auto* const rootAlone = "(2u, (0, {'children-display': <'submenu'>}, []))";

    EXPECT_EQ(tray.call("GetLayout", "iias", 0, 0, 0), rootAlone);
    EXPECT_EQ(tray.call("GetLayout", "iias", 0, 1, 0), tray.call("GetLayout", "iias", 0, -1, 0));
    EXPECT_EQ(tray.call("GetLayout", "iias", 0, 1, 0),
              tray.call("GetLayout", "iias", 0, 2147483647, 0));
}

TEST_F(StatusMenuTest, ReturnsTheLayoutOfOneEntry)
{
    EXPECT_EQ(tray.call("GetLayout", "iias", quitId, -1, 0),
              "(2u, (30, {'label': <'Quit'>, 'enabled': <true>}, []))");
}

TEST_F(StatusMenuTest, ReturnsOnlyTheRequestedProperties)
{
    EXPECT_EQ(tray.call("GetLayout", "iias", 0, -1, 2, "label", "icon-name"),
              "(2u, (0, {}, [<(1, {'label': <'Fully charged'>}, [])>, <(9, {}, [])>, "
              "<(19, {'label': <'Snooze 1 hour'>}, [])>, <(30, {'label': <'Quit'>}, [])>]))");
    EXPECT_EQ(tray.call("GetGroupProperties", "aias", 1, stateId, 1, "enabled"),
              "([(1, {'enabled': <false>})])");
}

TEST_F(StatusMenuTest, RejectsAnUnknownEntry)
{
    EXPECT_EQ(tray.call("GetLayout", "iias", 77, -1, 0), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("GetLayout", "iias", -1, -1, 0), SD_BUS_ERROR_INVALID_ARGS);
}

TEST_F(StatusMenuTest, ReturnsThePropertiesOfTheRequestedEntries)
{
    EXPECT_EQ(tray.call("GetGroupProperties", "aias", 4, quitId, separatorId, 77, -5, 0),
              "([(9, {'type': <'separator'>}), "
              "(30, {'label': <'Quit'>, 'enabled': <true>})])");
}

TEST_F(StatusMenuTest, ReturnsThePropertiesOfAllEntriesForAnEmptyList)
{
    EXPECT_EQ(tray.call("GetGroupProperties", "aias", 0, 0),
              "([(0, {'children-display': <'submenu'>}), "
              "(1, {'label': <'Fully charged'>, 'enabled': <false>}), "
              "(9, {'type': <'separator'>}), "
              "(19, {'label': <'Snooze 1 hour'>, 'enabled': <true>}), "
              "(30, {'label': <'Quit'>, 'enabled': <true>})])");
}

TEST_F(StatusMenuTest, ReturnsAnEntryOnceWhenItIsListedTwice)
{
    EXPECT_EQ(tray.call("GetGroupProperties", "aias", 3, quitId, quitId, quitId, 0),
              "([(30, {'label': <'Quit'>, 'enabled': <true>})])");
}

TEST_F(StatusMenuTest, ReturnsOneProperty)
{
    EXPECT_EQ(tray.call("GetProperty", "is", quitId, "label"), "(<'Quit'>)");
    EXPECT_EQ(tray.call("GetProperty", "is", stateId, "enabled"), "(<false>)");
    EXPECT_EQ(tray.call("GetProperty", "is", quitId, "icon-name"), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("GetProperty", "is", 77, "label"), SD_BUS_ERROR_INVALID_ARGS);
}

TEST_F(StatusMenuTest, HasThePropertiesOfItsInterface)
{
    EXPECT_EQ(tray.property("Version"), "(<3u>)");
    EXPECT_EQ(tray.property("Status"), "(<'normal'>)");
    EXPECT_EQ(tray.property("TextDirection"), "(<'ltr'>)");
    EXPECT_EQ(tray.property("IconThemePath"), "(<[]>)");
}

TEST_F(StatusMenuTest, DoublesUnderscoresThatWouldMakeMnemonics)
{
    menu->show({{.action = MenuAction::quit, .title = "a_b__c"}});

    EXPECT_EQ(tray.call("GetProperty", "is", 6, "label"), "(<'a__b____c'>)");
}

TEST_F(StatusMenuTest, ReportsAChoiceOnALaterTurn)
{
    EXPECT_EQ(tray.call("Event", "isvu", quitId, "clicked", "i", 0, 0U), "()");
    EXPECT_THAT(chosen, IsEmpty());
    runLoop.settle();

    EXPECT_THAT(chosen, ElementsAre(MenuAction::quit));
}

TEST_F(StatusMenuTest, DropsAPendingChoiceWhenDestroyed)
{
    tray.call("Event", "isvu", quitId, "clicked", "i", 0, 0U);

    menu.reset();
    runLoop.settle();

    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(StatusMenuTest, IgnoresEventsThatChooseNothing)
{
    for (const auto id : {0, stateId, separatorId, 77, -1, -2147483647 - 1, 2147483647}) {
        EXPECT_EQ(tray.call("Event", "isvu", id, "clicked", "s", "", 0U), "()") << id;
    }
    EXPECT_EQ(tray.call("Event", "isvu", quitId, "hovered", "i", 0, 0U), "()");
    EXPECT_EQ(tray.call("Event", "isvu", quitId, "", "as", 0, 0U), "()");
    EXPECT_EQ(tray.call("Event", "isvu", 0, "opened", "i", 0, 0U), "()");
    runLoop.settle();

    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(StatusMenuTest, RejectsCallsWithOtherArguments)
{
    EXPECT_EQ(tray.call("Event", "is", quitId, "clicked"), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("Event", "xsvu", std::int64_t{quitId}, "clicked", "i", 0, 0U),
              SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("GetLayout", "s", "everything"), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("GetGroupProperties", "as", 1, "label"), SD_BUS_ERROR_INVALID_ARGS);
    EXPECT_EQ(tray.call("EventGroup", "ai", 1, quitId), SD_BUS_ERROR_INVALID_ARGS);
    runLoop.settle();

    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(StatusMenuTest, HandlesGroupedEventsAndReportsUnknownEntries)
{
    EXPECT_EQ(tray.call("EventGroup", "a(isvu)", 3, snoozeId, "clicked", "i", 0, 0U,  //
                        77, "clicked", "s", "?", 0U,                                  //
                        quitId, "clicked", "ai", 0, 0U),
              "([77])");
    runLoop.settle();

    EXPECT_THAT(chosen, ElementsAre(MenuAction::snooze, MenuAction::quit));
}

TEST_F(StatusMenuTest, CountsAThousandClicksOfOneTurnAsOne)
{
    const auto call = owned<MessagePointer>([&](sd_bus_message** message) {
        const char* owner = nullptr;
        (void)sd_bus_get_unique_name(session.get(), &owner);
        return sd_bus_message_new_method_call(desktop.get(), message, owner, StatusMenu::path,
                                              "com.canonical.dbusmenu", "EventGroup");
    });
    ASSERT_GE(sd_bus_message_open_container(call.get(), 'a', "(isvu)"), 0);
    for (int i = 0; i < 1000; ++i) {
        ASSERT_GE(sd_bus_message_append(call.get(), "(isvu)", snoozeId, "clicked", "i", 0, 0U), 0);
    }
    ASSERT_GE(sd_bus_message_close_container(call.get()), 0);

    EXPECT_TRUE(answer(busLoop, call.get()));
    runLoop.settle();

    EXPECT_THAT(chosen, ElementsAre(MenuAction::snooze));
    EXPECT_EQ(tray.call("Event", "isvu", snoozeId, "clicked", "i", 0, 0U), "()");
    runLoop.settle();
    EXPECT_THAT(chosen, ElementsAre(MenuAction::snooze, MenuAction::snooze));
}

TEST_F(StatusMenuTest, NeedsNoUpdateWhenItIsAboutToShow)
{
    EXPECT_EQ(tray.call("AboutToShow", "i", 0), "(false)");
    EXPECT_EQ(tray.call("AboutToShow", "i", 77), "(false)");
    EXPECT_EQ(tray.call("AboutToShowGroup", "ai", 3, 0, 77, quitId), "([], [77])");
}

TEST_F(StatusMenuTest, SignalsNothingForTheSameEntries)
{
    menu->show(entries);

    EXPECT_THAT(tray.newSignals(), IsEmpty());
}

TEST_F(StatusMenuTest, SignalsOnlyANewLabel)
{
    entries[0].title = "On battery, 1 h left";

    menu->show(entries);

    EXPECT_THAT(
        tray.newSignals(),
        ElementsAre("ItemsPropertiesUpdated([(1, {'label': <'On battery, 1 h left'>})], [])"));
    EXPECT_THAT(tray.call("GetLayout", "iias", 0, 0, 0), testing::StartsWith("(2u, "));
}

TEST_F(StatusMenuTest, SignalsANewLayoutWhenAnEntryChangesItsAction)
{
    entries[2] = {.action = MenuAction::cancelSnooze, .title = "Cancel Snooze"};

    menu->show(entries);

    EXPECT_THAT(tray.newSignals(), ElementsAre("LayoutUpdated(3u, 0)"));
}

TEST_F(StatusMenuTest, SignalsANewLayoutWhenAnEntryIsRemoved)
{
    entries.pop_back();

    menu->show(entries);

    EXPECT_THAT(tray.newSignals(), ElementsAre("LayoutUpdated(3u, 0)"));
}

// A click on "Snooze 1 hour" must not cancel a snooze.
TEST_F(StatusMenuTest, IgnoresAChoiceOfAnEntryThatHasSinceChanged)
{
    entries[2] = {.action = MenuAction::cancelSnooze, .title = "Cancel Snooze"};
    menu->show(entries);

    EXPECT_EQ(tray.call("Event", "isvu", snoozeId, "clicked", "i", 0, 0U), "()");
    runLoop.settle();

    EXPECT_THAT(chosen, IsEmpty());
}

TEST_F(StatusMenuTest, IsEmptyWithoutEntries)
{
    menu->show({});

    EXPECT_EQ(tray.call("GetLayout", "iias", 0, -1, 0),
              "(3u, (0, {'children-display': <'submenu'>}, []))");
}

}  // namespace
}  // namespace vorlane::platform
