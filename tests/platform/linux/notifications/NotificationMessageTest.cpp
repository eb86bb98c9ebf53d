#include "platform/linux/notifications/NotificationMessage.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "tests/platform/linux/support/TemporaryFolder.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

const NotificationAction snooze{.identifier = "SNOOZE", .title = "Snooze 1 hour"};
const std::vector<NotificationCategory> categories{
    {.identifier = "OTHER", .actions = {{.identifier = "X", .title = "Y"}}},
    {.identifier = "VL_ALERT", .actions = {snooze}}};

class NotificationMessageTest : public testing::Test {
protected:
    static NotificationRequest request()
    {
        return {.identifier = "low",
                .title = "A & B",
                .body = "20% <left> & \"falling\"",
                .categoryIdentifier = "VL_ALERT",
                .sound = "default"};
    }

    NotificationMessageTest() { folder.write("vorlane-submarine.wav", "RIFF"); }

    NotificationMessage made(const NotificationRequest& request,
                             const NotificationCapabilities& capabilities) const
    {
        return notificationMessage(request, categories, capabilities,
                                   SoundFiles(folder.path().string()));
    }

    TemporaryFolder folder;
};

TEST_F(NotificationMessageTest, EscapesTheBodyForServersWithMarkup)
{
    const auto message = made(request(), {.bodyMarkup = true});

    EXPECT_EQ(message.title, "A & B");
    EXPECT_EQ(message.body, "20% &lt;left&gt; &amp; \"falling\"");
}

TEST_F(NotificationMessageTest, LeavesTheBodyUnescapedForOtherServers)
{
    EXPECT_EQ(made(request(), {}).body, request().body);
}

TEST_F(NotificationMessageTest, HasItsCategorysActionsIfTheServerSupportsActions)
{
    EXPECT_THAT(made(request(), {.actions = true}).actions, ElementsAre(snooze));
    EXPECT_THAT(made(request(), {.actions = false}).actions, IsEmpty());
}

TEST_F(NotificationMessageTest, HasNoActionsWithoutAKnownCategory)
{
    auto stranger = request();
    stranger.categoryIdentifier = "UNKNOWN";

    EXPECT_THAT(made(stranger, {.actions = true}).actions, IsEmpty());
}

TEST_F(NotificationMessageTest, NamesTheFileOfOurSoundsForServersThatPlaySounds)
{
    auto named = request();
    named.sound = "Submarine";

    const auto message = made(named, {.sound = true});

    EXPECT_EQ(message.soundFile, folder.path() / "vorlane-submarine.wav");
    EXPECT_EQ(message.soundName, std::nullopt);
}

TEST_F(NotificationMessageTest, NamesOtherSoundsByThemeForServersThatPlaySounds)
{
    auto handWritten = request();
    handWritten.sound = "complete";

    EXPECT_EQ(made(request(), {.sound = true}).soundName, "message-new-instant");
    EXPECT_EQ(made(handWritten, {.sound = true}).soundName, "complete");
    EXPECT_EQ(made(handWritten, {.sound = true}).soundFile, std::nullopt);
}

TEST_F(NotificationMessageTest, HasNoSoundForSilentRequestsAndForServersThatPlayNone)
{
    auto silent = request();
    silent.sound = std::nullopt;

    for (const auto& message : {made(silent, {.sound = true}), made(request(), {.sound = false})}) {
        EXPECT_EQ(message.soundName, std::nullopt);
        EXPECT_EQ(message.soundFile, std::nullopt);
    }
}

TEST_F(NotificationMessageTest, ShowsThePictureOfItsSymbol)
{
    auto shown = request();
    for (const auto* const symbol :
         {"battery.0", "battery.100.bolt", "powerplug.fill", "battery.worn"}) {
        shown.symbol = symbol;

        const auto icon = std::filesystem::path(made(shown, {}).icon);

        EXPECT_TRUE(icon.is_absolute() && std::filesystem::is_regular_file(icon)) << icon;
    }
    shown.symbol = "battery.100.bolt";
    EXPECT_THAT(made(shown, {}).icon, EndsWith("/vorlane-battery-100-bolt.svg"));
}

TEST_F(NotificationMessageTest, NamesThePictureTwiceForServersThatTakeItOnlyByPath)
{
    auto shown = request();
    shown.symbol = "battery.0";

    EXPECT_EQ(made(shown, {.imagePath = true}).image, made(shown, {}).icon);
    EXPECT_EQ(made(shown, {}).image, std::nullopt);
    shown.symbol = "battery.42";  // has no file
    EXPECT_EQ(made(shown, {.imagePath = true}).image, std::nullopt);
}

TEST_F(NotificationMessageTest, FallsBackToANeutralIconOfTheTheme)
{
    auto unknown = request();
    EXPECT_EQ(made(unknown, {}).icon, "vorlane-battery-50-symbolic");

    for (const auto* const symbol : {"battery.42", "x/../../status/battery.0"}) {
        unknown.symbol = symbol;
        EXPECT_EQ(made(unknown, {}).icon, "vorlane-battery-50-symbolic");
    }
}

TEST_F(NotificationMessageTest, HasNoCallForTextThatDBusCannotCarry)
{
    const auto bus = owned<BusPointer>(sd_bus_new);
    auto broken = request();
    broken.title = "\xFF";

    EXPECT_FALSE(notifyCall(bus.get(), ":1.1", made(broken, {})));
    EXPECT_FALSE(notifyCall(bus.get(), "not a name", made(request(), {})));
}

}  // namespace
}  // namespace vorlane::platform
