#include "platform/qt/popover/PopoverPanel.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>

#include "platform/qt/chart/ChartWidget.h"
#include "platform/qt/controls/PanelButton.h"
#include "platform/qt/popover/CycleBar.h"
#include "platform/qt/popover/DetailRowLabel.h"
#include "platform/qt/popover/RingWidget.h"
#include "tests/platform/qt/support/SampleContent.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Theme themeOf(double pointSize)
{
    QFont font(QStringLiteral("Sans"));
    font.setPointSizeF(pointSize);
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::black);
    return Theme::of(palette, font, std::nullopt);
}

class PopoverPanelTest : public testing::Test {
protected:
    PopoverPanelTest()
    {
        panel.setTheme(themeOf(10));
        panel.setContent(charging());
        panel.show();
    }

    // All visible texts, in reading order.
    std::vector<std::string> texts()
    {
        std::vector<std::pair<QPoint, std::string>> found;
        for (auto* widget : panel.findChildren<QWidget*>()) {
            if (!widget->isVisible()) continue;
            const auto* label = qobject_cast<QLabel*>(widget);
            const auto* button = qobject_cast<QAbstractButton*>(widget);
            if (!label && !button) continue;
            const auto text = label ? label->text() : button->text();
            found.emplace_back(widget->mapTo(&panel, QPoint()), text.toStdString());
        }
        // By the top edge: the ring is taller than the text beside it and so comes first.
        std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
            return std::pair(a.first.y(), a.first.x()) < std::pair(b.first.y(), b.first.x());
        });
        std::vector<std::string> result;
        result.reserve(found.size());
        for (const auto& [place, text] : found) result.push_back(text);
        return result;
    }

    template <typename Button>
    Button* button(const char* text)
    {
        for (auto* found : panel.findChildren<Button*>()) {
            if (found->isVisible() && found->text() == QLatin1String(text)) return found;
        }
        return nullptr;
    }

    QWidget* keyTab()
    {
        auto* focused = QApplication::focusWidget();
        press(focused ? focused : &panel, Qt::Key_Tab);
        return QApplication::focusWidget();
    }

    static void press(QWidget* widget, int key)
    {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(widget, &down);
        QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier);
        QApplication::sendEvent(widget, &up);
    }

    void update(const PopoverContent& content)
    {
        panel.setContent(content);
        QApplication::processEvents();
    }

    std::vector<std::string> asked;
    PopoverPanel panel{
        {.openSettings = [this] { asked.emplace_back("settings"); },
         .quit = [this] { asked.emplace_back("quit"); },
         .cancelSnooze = [this] { asked.emplace_back("cancel"); },
         .selectRange =
             [this](std::int64_t range) { asked.push_back("range " + std::to_string(range)); }}};
};

TEST_F(PopoverPanelTest, ShowsABatteryFromTheGaugeDownToTheButtons)
{
    EXPECT_THAT(texts(),
                ElementsAre("72%", "Charging, 42 min to full", "Plugged in for 36 min",
                            "Cycle count: 212 of 1000", "Battery health: 95% · Good",
                            "Temperature: 31.4 °C", "Power in: 38.2 W", "Adapter: 65 W", "24 hours",
                            "7 days", "Vorlane can only remind you. It cannot stop the charger.",
                            "Settings", "Quit"));
}

TEST_F(PopoverPanelTest, ShowsOnlyTheNoticeWithoutABattery)
{
    update(noBattery());

    EXPECT_THAT(texts(),
                ElementsAre("No battery found",
                            "This laptop does not report a battery, so Vorlane stays quiet.",
                            "Vorlane can only remind you. It cannot stop the charger.", "Settings",
                            "Quit"));
    EXPECT_FALSE(panel.findChild<ChartWidget*>()->isVisible());
}

TEST_F(PopoverPanelTest, ShowsTheBatteryAgainWhenItIsInserted)
{
    const auto before = texts();
    const auto height = panel.height();

    update(noBattery());
    EXPECT_LT(panel.height(), height);
    update(charging());

    EXPECT_EQ(texts(), before);
    EXPECT_EQ(panel.height(), height);
}

TEST_F(PopoverPanelTest, ShowsAndHidesLinesInPlace)
{
    update(onBattery());
    EXPECT_THAT(texts(), testing::Not(testing::Contains("Plugged in for 36 min")));
    EXPECT_THAT(texts(), testing::Not(testing::Contains("Adapter: 65 W")));
    EXPECT_THAT(texts(), testing::Contains("Power out: 11.8 W"));

    update(snoozed());
    EXPECT_THAT(texts(), testing::Contains("Alerts snoozed until 19:36"));
    EXPECT_THAT(texts(), testing::Contains("Adapter: 65 W"));

    auto bare = blocks(charging());
    bare.cycles.reset();
    bare.details.clear();
    auto content = charging();
    content.blocks = bare;
    update(content);
    EXPECT_THAT(panel.findChildren<CycleBar*>(),
                testing::Each(testing::Property(&QWidget::isVisible, false)));
    EXPECT_THAT(texts(), testing::Not(testing::Contains("Temperature: 31.4 °C")));
}

TEST_F(PopoverPanelTest, ReusesItsWidgets)
{
    const std::vector shown{charging(),  noBattery(), snoozed(),
                            onBattery(), sevenDays(), collecting()};
    for (const auto& content : shown) update(content);
    const auto children = panel.findChildren<QObject*>();

    for (int i = 0; i < 100; ++i) update(shown[static_cast<std::size_t>(i) % shown.size()]);

    EXPECT_EQ(panel.findChildren<QObject*>(), children);
}

TEST_F(PopoverPanelTest, KeepsItsWidthAndAdjustsItsHeight)
{
    for (const auto& content : {charging(), snoozed(), noBattery()}) {
        update(content);
        EXPECT_EQ(panel.width(), 340);
        EXPECT_EQ(panel.height(), panel.heightForWidth(340));
    }
}

TEST_F(PopoverPanelTest, ReportsTheUsersIntents)
{
    update(snoozed());

    button<QPushButton>("Cancel")->click();
    button<QRadioButton>("7 days")->click();
    button<QPushButton>("Settings")->click();
    button<QPushButton>("Quit")->click();

    EXPECT_THAT(asked, ElementsAre("cancel", "range 1", "settings", "quit"));
}

TEST_F(PopoverPanelTest, ReportsNothingWhenOnlyShown)
{
    update(sevenDays());
    update(charging());

    EXPECT_THAT(asked, IsEmpty());
}

TEST_F(PopoverPanelTest, SelectsTheRangeOfItsContent)
{
    update(sevenDays());
    EXPECT_TRUE(button<QRadioButton>("7 days")->isChecked());

    update(charging());
    EXPECT_TRUE(button<QRadioButton>("24 hours")->isChecked());
}

TEST_F(PopoverPanelTest, PressesButtonsByReturn)
{
    press(button<PanelButton>("Settings"), Qt::Key_Return);
    press(button<PanelButton>("Quit"), Qt::Key_Enter);

    EXPECT_THAT(asked, ElementsAre("settings", "quit"));
}

TEST_F(PopoverPanelTest, ChangesTheRangeByArrowKeys)
{
    panel.activateWindow();
    QApplication::processEvents();
    button<QRadioButton>("24 hours")->setFocus();

    press(button<QRadioButton>("24 hours"), Qt::Key_Right);
    EXPECT_TRUE(button<QRadioButton>("7 days")->isChecked());
    press(button<QRadioButton>("7 days"), Qt::Key_Left);

    EXPECT_THAT(asked, ElementsAre("range 1", "range 0"));
}

TEST_F(PopoverPanelTest, MovesTheFocusByTabInReadingOrder)
{
    update(snoozed());
    panel.activateWindow();
    QApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), &panel) << "no control is in focus at first";

    EXPECT_EQ(keyTab(), button<QPushButton>("Cancel"));
    EXPECT_EQ(keyTab(), button<QRadioButton>("24 hours"));
    EXPECT_EQ(keyTab(), panel.findChild<ChartWidget*>());
    EXPECT_EQ(keyTab(), button<QPushButton>("Settings"));
    EXPECT_EQ(keyTab(), button<QPushButton>("Quit"));
    EXPECT_EQ(keyTab(), button<QPushButton>("Cancel"));
}

TEST_F(PopoverPanelTest, ClipsNothingAtTwiceTheFontSize)
{
    auto content = wornBattery();
    auto& worn = std::get<BatteryBlocks>(content.blocks);
    worn.gauge.snooze =
        SnoozeLine{.text = "Alerts snoozed until 11:45:00 p. m.", .cancel = "Cancel"};
    panel.setTheme(themeOf(20));
    update(content);

    for (auto* label : panel.findChildren<QLabel*>()) {
        if (!label->isVisible() || qobject_cast<RingWidget*>(label)) continue;
        EXPECT_GE(label->height(), label->heightForWidth(label->width()))
            << label->text().toStdString();
        EXPECT_LE(label->mapTo(&panel, label->rect().bottomRight()).x(), 340 - 16);
    }
    for (auto* part : panel.findChildren<QAbstractButton*>()) {
        if (!part->isVisible()) continue;
        EXPECT_GE(part->width(), part->sizeHint().width()) << part->text().toStdString();
        EXPECT_GE(part->height(), part->sizeHint().height()) << part->text().toStdString();
    }
}

}  // namespace
}  // namespace vorlane::platform
