#include "platform/linux/windows/PortalAppearance.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "tests/platform/linux/support/PrivateBus.h"

namespace vorlane::platform {
namespace {

using Scheme = Appearance::Scheme;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* interfaceName = "org.freedesktop.portal.Settings";
constexpr const char* appearanceNamespace = "org.freedesktop.appearance";

// A fake settings portal with the two keys that the program reads, and with others: "contrast", and
// a "color-scheme" in another namespace.
class FakePortal {
public:
    std::optional<std::uint32_t> scheme;
    std::optional<std::array<double, 3>> accent;
    int readings = 0;
    bool hangs = false;  // leaves calls unanswered until `answerLate`

    explicit FakePortal(sd_bus* bus, std::uint64_t flags = SD_BUS_NAME_ALLOW_REPLACEMENT)
        : bus_(bus), object(owned<SlotPointer>([this](sd_bus_slot** slot) {
              return sd_bus_add_object_vtable(bus_, slot, path, interfaceName, vtable, this);
          }))
    {
        EXPECT_GT(sd_bus_request_name(bus_, "org.freedesktop.portal.Desktop", flags), 0);
    }

    void sendScheme(std::uint32_t value, const char* space = appearanceNamespace)
    {
        EXPECT_GE(sd_bus_emit_signal(bus_, path, interfaceName, "SettingChanged", "ssv", space,
                                     "color-scheme", "u", value),
                  0);
    }

    void sendAccent(std::array<double, 3> rgb)
    {
        EXPECT_GE(sd_bus_emit_signal(bus_, path, interfaceName, "SettingChanged", "ssv",
                                     appearanceNamespace, "accent-color", "(ddd)", rgb[0], rgb[1],
                                     rgb[2]),
                  0);
    }

    void sendText(const char* key)
    {
        EXPECT_GE(sd_bus_emit_signal(bus_, path, interfaceName, "SettingChanged", "ssv",
                                     appearanceNamespace, key, "s", "dark"),
                  0);
    }

    void answerLate()
    {
        hangs = false;
        for (const auto& call : std::exchange(unanswered, {})) EXPECT_GE(readAll(call.get()), 0);
    }

private:
    int readAll(sd_bus_message* call)
    {
        ++readings;
        if (hangs) {
            unanswered.emplace_back(sd_bus_message_ref(call));
            return 1;
        }
        MessagePointer reply;
        sd_bus_message* message = nullptr;
        (void)sd_bus_message_new_method_return(call, &message);
        reply.reset(message);
        (void)sd_bus_message_open_container(message, 'a', "{sa{sv}}");
        (void)sd_bus_message_append(message, "{sa{sv}}", "org.example.other", 1, "color-scheme",
                                    "u", 2);
        (void)sd_bus_message_open_container(message, 'e', "sa{sv}");
        (void)sd_bus_message_append(message, "s", appearanceNamespace);
        (void)sd_bus_message_open_container(message, 'a', "{sv}");
        (void)sd_bus_message_append(message, "{sv}", "contrast", "u", 1);
        if (scheme) (void)sd_bus_message_append(message, "{sv}", "color-scheme", "u", *scheme);
        if (accent) {
            (void)sd_bus_message_append(message, "{sv}", "accent-color", "(ddd)", (*accent)[0],
                                        (*accent)[1], (*accent)[2]);
        }
        (void)sd_bus_message_close_container(message);
        (void)sd_bus_message_close_container(message);
        (void)sd_bus_message_close_container(message);
        return sd_bus_send(bus_, message, nullptr);
    }

    static inline const sd_bus_vtable vtable[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("ReadAll", "as", "a{sa{sv}}", (onCall<FakePortal, &FakePortal::readAll>),
                      SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_SIGNAL("SettingChanged", "ssv", 0),
        SD_BUS_VTABLE_END,
    };

    sd_bus* bus_;
    std::vector<MessagePointer> unanswered;
    SlotPointer object;
};

class PortalAppearanceTest : public testing::Test {
protected:
    SdEventRunLoop loop;
    PrivateBus bus;
    BusPointer session = bus.connect(loop);
    BusPointer desktop = bus.connect(loop);
    BusPointer stranger = bus.connect(loop);
    std::optional<FakePortal> portal;
    std::vector<Appearance> reports;
    std::optional<PortalAppearance> appearance;

    FakePortal& offerPortal() { return portal.emplace(desktop.get()); }

    void ask(const Appearance& known = {})
    {
        const auto changed = [this](const Appearance& next) { reports.push_back(next); };
        appearance.emplace(session.get(), changed, known);
    }

    // Waits until everything sent so far has arrived.
    void settle()
    {
        for (auto* const end : {session.get(), desktop.get(), stranger.get(), session.get()}) {
            const auto call = owned<MessagePointer>([&](sd_bus_message** message) {
                return sd_bus_message_new_method_call(end, message, "org.freedesktop.DBus", "/",
                                                      "org.freedesktop.DBus", "GetId");
            });
            (void)answer(loop, call.get());
        }
    }
};

TEST_F(PortalAppearanceTest, ReportsThePortalsSettings)
{
    auto& there = offerPortal();
    there.scheme = 1;
    there.accent = {1.0, 0.5, 0.0};

    ask();
    ASSERT_TRUE(runUntil(loop, [&] { return !reports.empty(); }));

    EXPECT_THAT(reports,
                ElementsAre(Appearance{.scheme = Scheme::dark,
                                       .accent = Rgb{.red = 255, .green = 128, .blue = 0}}));
}

TEST_F(PortalAppearanceTest, ReportsNothingWithoutAPreference)
{
    auto& there = offerPortal();
    there.scheme = 0;

    ask();
    ASSERT_TRUE(runUntil(loop, [&] { return there.readings == 1; }));
    settle();

    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(PortalAppearanceTest, ReportsThatAKnownPreferenceWasWithdrawn)
{
    offerPortal().scheme = 0;

    ask({.scheme = Scheme::dark, .accent = std::nullopt});
    ASSERT_TRUE(runUntil(loop, [&] { return !reports.empty(); }));

    EXPECT_THAT(reports, ElementsAre(Appearance{}));
}

TEST_F(PortalAppearanceTest, FollowsTheUsersChanges)
{
    auto& there = offerPortal();
    ask();
    ASSERT_TRUE(runUntil(loop, [&] { return there.readings == 1; }));
    settle();

    there.sendScheme(2);
    there.sendScheme(2);
    there.sendAccent({0.0, 0.0, 1.0});
    there.sendScheme(1);
    ASSERT_TRUE(runUntil(loop, [&] { return reports.size() == 3; }));

    const Rgb blue{.red = 0, .green = 0, .blue = 255};
    EXPECT_THAT(reports, ElementsAre(Appearance{.scheme = Scheme::light, .accent = std::nullopt},
                                     Appearance{.scheme = Scheme::light, .accent = blue},
                                     Appearance{.scheme = Scheme::dark, .accent = blue}));
}

TEST_F(PortalAppearanceTest, TreatsAnInvalidAccentAsNone)
{
    auto& there = offerPortal();
    there.accent = {0.2, 0.4, 0.6};
    ask();
    ASSERT_TRUE(runUntil(loop, [&] { return reports.size() == 1; }));

    there.sendAccent({-1.0, -1.0, -1.0});
    ASSERT_TRUE(runUntil(loop, [&] { return reports.size() == 2; }));

    EXPECT_EQ(reports.back(), Appearance{});
}

TEST_F(PortalAppearanceTest, IgnoresUnknownKeysAndTypes)
{
    auto& there = offerPortal();
    ask();
    ASSERT_TRUE(runUntil(loop, [&] { return there.readings == 1; }));

    there.sendText("color-scheme");
    there.sendText("accent-color");
    there.sendScheme(1, "org.example.other");
    there.sendScheme(2);
    ASSERT_TRUE(runUntil(loop, [&] { return !reports.empty(); }));

    EXPECT_THAT(reports, ElementsAre(Appearance{.scheme = Scheme::light, .accent = std::nullopt}));
}

TEST_F(PortalAppearanceTest, IgnoresSignalsOfOtherClients)
{
    auto& there = offerPortal();
    ask();
    ASSERT_TRUE(runUntil(loop, [&] { return there.readings == 1; }));
    settle();

    EXPECT_GE(sd_bus_emit_signal(stranger.get(), path, interfaceName, "SettingChanged", "ssv",
                                 appearanceNamespace, "color-scheme", "u", 1),
              0);
    settle();
    there.sendScheme(2);
    ASSERT_TRUE(runUntil(loop, [&] { return !reports.empty(); }));

    EXPECT_EQ(reports.front().scheme, Scheme::light);
}

TEST_F(PortalAppearanceTest, AsksAPortalThatStartsLater)
{
    ask();
    settle();

    offerPortal().scheme = 1;
    ASSERT_TRUE(runUntil(loop, [&] { return !reports.empty(); }));

    EXPECT_EQ(reports.front().scheme, Scheme::dark);
}

TEST_F(PortalAppearanceTest, AsksAPortalThatIsRestarted)
{
    offerPortal().scheme = 1;
    ask();
    ASSERT_TRUE(runUntil(loop, [&] { return reports.size() == 1; }));

    portal.reset();
    desktop = bus.connect(loop);
    offerPortal().scheme = 2;
    ASSERT_TRUE(runUntil(loop, [&] { return reports.size() == 2; }));

    EXPECT_EQ(reports.back().scheme, Scheme::light);
}

TEST_F(PortalAppearanceTest, AsksTheNextPortalWhenOneDiesBeforeAnswering)
{
    offerPortal().hangs = true;
    ask();
    ASSERT_TRUE(runUntil(loop, [&] { return portal->readings == 1; }));

    portal.reset();
    desktop = bus.connect(loop);
    offerPortal().scheme = 1;
    ASSERT_TRUE(runUntil(loop, [&] { return !reports.empty(); }));

    EXPECT_EQ(reports.front().scheme, Scheme::dark);
}

TEST_F(PortalAppearanceTest, AsksThePortalThatReplacedOneBeforeItAnswered)
{
    auto& first = offerPortal();
    first.hangs = true;
    ask();
    ASSERT_TRUE(runUntil(loop, [&] { return first.readings == 1; }));

    FakePortal next(stranger.get(), SD_BUS_NAME_REPLACE_EXISTING);
    next.scheme = 1;
    ASSERT_TRUE(runUntil(loop, [&] { return !reports.empty(); }));

    EXPECT_EQ(reports.front().scheme, Scheme::dark);
}

TEST_F(PortalAppearanceTest, AcceptsALateAnswer)
{
    auto& there = offerPortal();
    there.scheme = 1;
    there.hangs = true;
    constexpr std::uint64_t callTimeout = 20'000;  // in microseconds, instead of the usual 25 s
    ASSERT_GE(sd_bus_set_method_call_timeout(session.get(), callTimeout), 0);
    ask();
    ASSERT_TRUE(runUntil(loop, [&] { return there.readings == 1; }));
    bool isOver = false;
    const auto timer = loop.after(Seconds{0.05}, [&] { isOver = true; });
    ASSERT_TRUE(runUntil(loop, [&] { return isOver; }));

    there.answerLate();
    ASSERT_TRUE(runUntil(loop, [&] { return !reports.empty(); }));

    EXPECT_EQ(reports.front().scheme, Scheme::dark);
}

TEST_F(PortalAppearanceTest, HasNoPreferenceWithoutAPortal)
{
    ask();
    settle();

    EXPECT_THAT(reports, IsEmpty());
}

}  // namespace
}  // namespace vorlane::platform
