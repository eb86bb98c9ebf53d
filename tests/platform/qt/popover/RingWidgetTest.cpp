#include "platform/qt/popover/RingWidget.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <cmath>
#include <numbers>

#include "tests/platform/qt/support/Pictures.h"

namespace vorlane::platform {
namespace {

class RingWidgetTest : public testing::Test {
protected:
    RingWidgetTest() { ring.setTheme(theme); }

    void show(std::int64_t percent, Color color = Color::green)
    {
        ring.setContent(
            {.percent = percent, .color = color, .text = std::to_string(percent) + "%"});
        image = painted(ring);
    }

    // The colour on the ring at this hour of a clock face.
    std::string atHour(double hour) const
    {
        const double angle = hour / 12 * 2 * std::numbers::pi;
        return colorAt(image, QPointF(52 + 46 * std::sin(angle), 52 - 46 * std::cos(angle)));
    }

    const Theme theme = Theme::of(QPalette(Qt::white), QFont("Sans", 10), std::nullopt);
    RingWidget ring;
    QImage image;
};

TEST_F(RingWidgetTest, FillsAQuarterFromTheTopToThreeOClock)
{
    show(25);

    for (const double hour : {0.1, 1.0, 2.0, 2.9})
        EXPECT_EQ(atHour(hour), nameOf(theme.greenFill)) << hour;
    for (const double hour : {4.0, 6.0, 9.0, 11.0})
        EXPECT_EQ(atHour(hour), nameOf(theme.track)) << hour;
}

TEST_F(RingWidgetTest, HasARoundEnd)
{
    show(25);

    // The round end adds half of the line's width: 5.5 of the circumference of 289.
    EXPECT_EQ(atHour(3 + 12 * 4.0 / 289), nameOf(theme.greenFill));
    EXPECT_EQ(atHour(3 + 12 * 7.5 / 289), nameOf(theme.track));
}

TEST_F(RingWidgetTest, ClampsTheArcButNotTheText)
{
    show(0);
    EXPECT_EQ(atHour(0), nameOf(theme.track));
    show(-40);
    EXPECT_EQ(atHour(0), nameOf(theme.track));
    EXPECT_EQ(atHour(11), nameOf(theme.track));

    show(100);
    const auto full = image;
    show(101);
    for (const double hour : {0.0, 3.0, 6.0, 9.0, 11.9})
        EXPECT_EQ(atHour(hour), nameOf(theme.greenFill));
    EXPECT_EQ(ring.text(), "101%");
}

TEST_F(RingWidgetTest, HasTheColourOfItsContent)
{
    for (const auto color : {Color::accent, Color::green, Color::orange, Color::red}) {
        show(60, color);
        EXPECT_EQ(atHour(3), nameOf(theme.fill(color)));
    }
}

TEST_F(RingWidgetTest, KeepsItsTextInsideTheRing)
{
    ring.setTheme(Theme::of(QPalette(Qt::white), QFont("Sans", 30), std::nullopt));
    show(100);

    for (int y = 0; y < 104; ++y) {
        for (int x = 0; x < 104; ++x) {
            const double distance = std::hypot(x + 0.5 - 52, y + 0.5 - 52);
            if (distance < 37 || distance > 39.5) continue;
            EXPECT_EQ(image.pixelColor(x, y).alpha(), 0) << x << ',' << y;
        }
    }
}

TEST_F(RingWidgetTest, OffersItsPercentageToScreenReaders)
{
    show(80);

    auto* read = QAccessible::queryAccessibleInterface(&ring);
    EXPECT_EQ(read->role(), QAccessible::StaticText);
    EXPECT_EQ(read->text(QAccessible::Name), "80%");
}

}  // namespace
}  // namespace vorlane::platform
