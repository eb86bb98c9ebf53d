// What screen readers find in the popover.
#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>

#include "platform/qt/popover/PopoverPanel.h"
#include "tests/platform/qt/support/SampleContent.h"

namespace vorlane::platform {
namespace {

class PopoverAccessibilityTest : public testing::Test {
protected:
    PopoverAccessibilityTest()
    {
        panel.setTheme(Theme::of(QPalette(), QFont("Sans", 10), std::nullopt));
        panel.show();
    }

    // Role and name of everything with a name.
    std::vector<std::pair<QAccessible::Role, std::string>> announced(const PopoverContent& content)
    {
        panel.setContent(content);
        std::vector<std::pair<QAccessible::Role, std::string>> found;
        collect(QAccessible::queryAccessibleInterface(&panel), found);
        return found;
    }

    void collect(QAccessibleInterface* from,
                 std::vector<std::pair<QAccessible::Role, std::string>>& found)
    {
        if (from->state().invisible) return;
        const auto name = from->text(QAccessible::Name).toStdString();
        if (!name.empty()) found.emplace_back(from->role(), name);
        for (int i = 0; i < from->childCount(); ++i) collect(from->child(i), found);
    }

    PopoverPanel panel{{.openSettings = [] {},
                        .quit = [] {},
                        .cancelSnooze = [] {},
                        .selectRange = [](std::int64_t) {}}};
};

TEST_F(PopoverAccessibilityTest, GivesEverythingARoleAndAName)
{
    using Role = QAccessible::Role;
    const auto text = [](const char* name) {
        return std::pair(Role::StaticText, std::string(name));
    };

    EXPECT_THAT(
        announced(snoozed()),
        testing::UnorderedElementsAre(
            text("100%"), text("Fully charged"), text("Plugged in for 36 min"),
            text("Alerts snoozed until 19:36"), std::pair(Role::Button, "Cancel"),
            text("Cycle count: 212 of 1000"), std::pair(Role::ProgressBar, "Cycle count"),
            text("Battery health: 95% · Good"), text("Temperature: 31.4 °C"),
            text("Power in: 38.2 W"), text("Adapter: 65 W"),
            std::pair(Role::RadioButton, "24 hours"), std::pair(Role::RadioButton, "7 days"),
            std::pair(Role::Chart, "Charge over the last 24 hours: 48% to 100%, now 100%"),
            text("Vorlane can only remind you. It cannot stop the charger."),
            std::pair(Role::Button, "Settings"), std::pair(Role::Button, "Quit")));
}

TEST_F(PopoverAccessibilityTest, HidesAllDetailsWithoutABattery)
{
    using Role = QAccessible::Role;
    announced(charging());

    EXPECT_THAT(
        announced(noBattery()),
        testing::UnorderedElementsAre(
            std::pair(Role::StaticText, "No battery found"),
            std::pair(Role::StaticText,
                      "This laptop does not report a battery, so Vorlane stays quiet."),
            std::pair(Role::StaticText, "Vorlane can only remind you. It cannot stop the charger."),
            std::pair(Role::Button, "Settings"), std::pair(Role::Button, "Quit")));
}

TEST_F(PopoverAccessibilityTest, GivesTheCyclesAsAValueAndAMaximum)
{
    panel.setContent(wornBattery());

    for (auto* child : panel.findChildren<QWidget*>()) {
        auto* read = QAccessible::queryAccessibleInterface(child);
        if (read->role() != QAccessible::ProgressBar) continue;
        EXPECT_EQ(read->valueInterface()->currentValue().toInt(), 934);
        EXPECT_EQ(read->valueInterface()->maximumValue().toInt(), 1000);
        return;
    }
    ADD_FAILURE() << "no bar";
}

}  // namespace
}  // namespace vorlane::platform
