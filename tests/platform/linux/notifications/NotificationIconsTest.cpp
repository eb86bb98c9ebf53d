#include "platform/linux/notifications/NotificationIcons.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vorlane::platform {
namespace {

constexpr const char* neutral = "vorlane-battery-50-symbolic";

TEST(NotificationIconsTest, FindsThePictureOfEachReminder)
{
    const NotificationIcons icons;

    for (const auto* const symbol :
         {"battery.0", "battery.100.bolt", "powerplug.fill", "battery.worn"}) {
        const auto icon = std::filesystem::path(icons.icon(symbol));
        EXPECT_TRUE(icon.is_absolute() && std::filesystem::is_regular_file(icon)) << icon;
    }
}

TEST(NotificationIconsTest, NamesTheFileAfterTheSymbol)
{
    const auto icon = std::filesystem::path(NotificationIcons().icon("battery.100.bolt"));

    EXPECT_EQ(icon.filename(), "vorlane-battery-100-bolt.svg");
}

TEST(NotificationIconsTest, NamesANeutralIconOfTheThemeWhereThereIsNoPicture)
{
    const NotificationIcons icons;

    EXPECT_EQ(icons.icon(std::nullopt), neutral);
    EXPECT_EQ(icons.icon("battery.42"), neutral);
    EXPECT_EQ(icons.icon("x/../../status/battery.0"), neutral);
    EXPECT_EQ(NotificationIcons("/nowhere").icon("battery.0"), neutral);
}

}  // namespace
}  // namespace vorlane::platform
