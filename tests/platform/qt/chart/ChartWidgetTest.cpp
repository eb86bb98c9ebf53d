#include "platform/qt/chart/ChartWidget.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include "platform/qt/chart/ChartText.h"
#include "tests/platform/qt/support/Pictures.h"
#include "tests/platform/qt/support/TimeZone.h"

namespace vorlane::platform {
namespace {

constexpr Date noon{1772622000};  // a Wednesday in Berlin
constexpr Seconds hour{3600};

class ChartWidgetTest : public testing::Test {
protected:
    ChartWidgetTest()
    {
        chart.resize(308, ChartWidget::fixedHeight);
        chart.setTheme(theme);
        chart.setLocale(english.locale);
    }

    struct Sample {
        double hoursAgo;
        std::int64_t pct;
        std::int64_t seg = 0;
    };

    void show(const std::vector<Sample>& samples, int days = 1)
    {
        content = {.notice = std::nullopt,
                   .from = noon - 24.0 * days * hour,
                   .until = noon,
                   .lowest = 0,
                   .highest = 100,
                   .timeLabel = "Time",
                   .valueLabel = "Charge",
                   .marks = {{.value = 0, .label = "0%"},
                             {.value = 50, .label = "50%"},
                             {.value = 100, .label = "100%"}},
                   .points = {}};
        for (const auto& [hoursAgo, pct, seg] : samples) {
            content.points.push_back({.id = std::ssize(content.points),
                                      .date = noon - hoursAgo * hour,
                                      .pct = pct,
                                      .seg = seg});
        }
        chart.setContent(content);
    }

    QPointF place(double hoursAgo, double pct) const
    {
        const auto plot = chart.plot();
        const double share = 1 - (hoursAgo * hour) / (content.until - content.from);
        return {plot.left() + plot.width() * share, plot.bottom() - plot.height() * pct / 100};
    }

    std::string drawnAt(double hoursAgo, double pct)
    {
        return colorAt(painted(chart, 4), place(hoursAgo, pct));
    }

    void point(double hoursAgo)
    {
        const QPointF position(place(hoursAgo, 50));
        QMouseEvent move(QEvent::MouseMove, position, position, Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&chart, &move);
    }

    void press(int key)
    {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&chart, &down);
    }

    std::string reading() { return chart.shownReading().toStdString(); }

    const Theme theme = Theme::of(QPalette(Qt::white), QFont("Sans", 10), QColor(0x2f, 0x7d, 0xe1));
    const LocalTimes english{.locale = QLocale(QLocale::English, QLocale::UnitedKingdom)};
    TimeZone zone{"Europe/Berlin"};
    ChartContent content;
    ChartWidget chart;
};

TEST_F(ChartWidgetTest, DrawsALineThroughItsPoints)
{
    show({{20, 40}, {10, 80}, {0, 80}});

    EXPECT_EQ(drawnAt(15, 60), nameOf(theme.accent));
    EXPECT_EQ(drawnAt(5, 80), nameOf(theme.accent));
    EXPECT_NE(drawnAt(5, 70), nameOf(theme.accent));
}

TEST_F(ChartWidgetTest, LeavesAGapBetweenSegments)
{
    show({{20, 40}, {14, 40}, {8, 40, 1}, {0, 40, 1}});

    EXPECT_EQ(drawnAt(17, 40), nameOf(theme.accent));
    EXPECT_EQ(drawnAt(11, 40), "none") << "nothing between";
    EXPECT_EQ(drawnAt(11, 20), "none") << "nor below";
    EXPECT_EQ(drawnAt(4, 40), nameOf(theme.accent));
}

TEST_F(ChartWidgetTest, DrawsNothingOutsideItsScales)
{
    show({{20, 40}, {-3, 40}, {-3, 160}, {10, 160}});

    EXPECT_EQ(drawnAt(1, 40), nameOf(theme.accent));
    EXPECT_NE(drawnAt(-1, 40), nameOf(theme.accent)) << "the future";
    EXPECT_NE(drawnAt(0.5, 108), nameOf(theme.accent)) << "more than full";
}

TEST_F(ChartWidgetTest, ShowsASegmentOfOnePointAsADot)
{
    show({{20, 40}, {14, 40}, {11, 70, 1}, {8, 40, 2}, {0, 40, 2}});

    EXPECT_EQ(drawnAt(11, 70), nameOf(theme.accent));
}

TEST_F(ChartWidgetTest, HasGridLinesAtItsMarks)
{
    show({{20, 10}, {19, 10}});

    for (const int pct : {0, 50, 100}) {
        const auto at = place(11.5, pct);
        EXPECT_EQ(colorAt(painted(chart), QPointF(at.x(), std::round(at.y()))),
                  nameOf(theme.separator))
            << pct;
    }
}

TEST_F(ChartWidgetTest, KeepsGridLinesOnWholePixelsAtAnyScale)
{
    show({{20, 10}, {19, 10}});

    for (const double scale : {1.0, 1.5, 2.0}) {
        const auto image = painted(chart, scale);
        const int x = static_cast<int>(place(11.5, 50).x() * scale);
        int lines = 0;
        for (int y = 0; y < static_cast<int>(chart.plot().bottom() * scale) + 3; ++y) {
            const auto color = image.pixelColor(x, y);
            if (color.alpha() == 0) continue;
            EXPECT_EQ(nameOf(color), nameOf(theme.separator)) << scale;
            ++lines;
        }
        EXPECT_EQ(lines, scale < 2 ? 3 : 6) << scale;
    }
}

TEST_F(ChartWidgetTest, ShowsOnlyTheNoticeCentred)
{
    show({});
    content.notice = "Collecting history";
    chart.setContent(content);

    const auto image = painted(chart);
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > 0) ink = ink.united(QRect(x, y, 1, 1));
        }
    }
    EXPECT_NEAR(ink.center().x(), 154, 3);
    EXPECT_NEAR(ink.center().y(), 55, 5);
    EXPECT_LT(ink.height(), 30);
    EXPECT_EQ(chart.focusPolicy(), Qt::NoFocus);
}

TEST_F(ChartWidgetTest, ReadsTheSampleUnderThePointer)
{
    show({{20, 40}, {10, 80}, {0, 78}});

    point(11);
    EXPECT_EQ(reading(), "80% · 02:00");
    point(16);
    EXPECT_EQ(reading(), "40% · 16:00");
    EXPECT_EQ(drawnAt(20, 40), nameOf(theme.accent)) << "a dot";
    EXPECT_EQ(drawnAt(20, 90), nameOf(theme.secondary)) << "on an upright line";

    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&chart, &leave);
    EXPECT_EQ(reading(), "");
    EXPECT_EQ(drawnAt(20, 90), "none");
}

TEST_F(ChartWidgetTest, NamesTheWeekdayInAChartOfSeveralDays)
{
    show({{100, 40}, {0, 78}}, 7);

    point(90);
    EXPECT_EQ(reading(), "40% · Sat 08:00");
}

TEST_F(ChartWidgetTest, MovesTheReadingByKeys)
{
    show({{20, 40}, {10, 80}, {0, 78}});

    press(Qt::Key_Left);
    EXPECT_EQ(reading(), "80% · 02:00");
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_EQ(reading(), "40% · 16:00");
    press(Qt::Key_Right);
    EXPECT_EQ(reading(), "80% · 02:00");
    press(Qt::Key_End);
    EXPECT_EQ(reading(), "78% · 12:00");
    press(Qt::Key_Home);
    EXPECT_EQ(reading(), "40% · 16:00");
}

TEST_F(ChartWidgetTest, KeepsTheReadingWhileItsSampleIsShown)
{
    show({{20, 40}, {10, 80}, {0, 78}});
    point(11);

    show({{20, 40}, {10, 80}, {0.5, 78}, {0, 77}});
    EXPECT_EQ(reading(), "80% · 02:00");

    show({{20, 40}, {10, 80}, {0, 78}});
    point(20);
    content.from = noon - 12 * hour;
    content.points.erase(content.points.begin());
    chart.setContent(content);
    EXPECT_EQ(reading(), "");
}

TEST_F(ChartWidgetTest, MovesItsMarksToAnotherTimeZoneWithTheNextContent)
{
    const auto fresh = [this] {
        ChartWidget other;
        other.resize(chart.size());
        other.setTheme(theme);
        other.setLocale(english.locale);
        other.setContent(content);
        return painted(other);
    };
    show({{20, 40}, {0, 78}});
    EXPECT_EQ(painted(chart), fresh());

    zone.set("Asia/Tokyo");
    show({{20, 40}, {0, 77}});

    EXPECT_EQ(painted(chart), fresh());
    zone.set("Europe/Berlin");
    EXPECT_NE(painted(chart), fresh());
}

TEST_F(ChartWidgetTest, ShowsTheReadingInAnotherTimeZoneWithTheNextContent)
{
    show({{20, 40}, {10, 80}, {0, 78}});
    point(11);
    EXPECT_EQ(chart.accessibleDescription(), "80% · 02:00");

    zone.set("Asia/Tokyo");
    show({{20, 40}, {10, 80}, {0, 77}});

    EXPECT_EQ(chart.accessibleDescription(), "80% · 10:00");
    EXPECT_EQ(reading(), "80% · 10:00");
}

TEST_F(ChartWidgetTest, PlacesTheReadingInsideItselfAndBesideTheSample)
{
    show({{24, 100}, {18, 3}, {12, 50}, {6, 97}, {0, 0}});

    for (const auto& [hoursAgo, pct, seg] :
         std::vector<Sample>{{24, 100}, {18, 3}, {12, 50}, {6, 97}, {0, 0}}) {
        point(hoursAgo);
        EXPECT_TRUE(QRectF(chart.rect()).contains(chart.bubble())) << hoursAgo;
        EXPECT_FALSE(chart.bubble().contains(place(hoursAgo, static_cast<double>(pct))))
            << hoursAgo;
        EXPECT_EQ(colorAt(painted(chart), chart.bubble().topLeft() + QPointF(5, 4)),
                  nameOf(theme.raised));
    }
}

TEST_F(ChartWidgetTest, SummarizesItselfInASentence)
{
    auto* read = QAccessible::queryAccessibleInterface(&chart);
    show({{20, 45}, {10, 80}, {0, 78}});
    EXPECT_EQ(read->role(), QAccessible::Chart);
    EXPECT_EQ(read->text(QAccessible::Name), "Charge over the last 24 hours: 45% to 80%, now 78%");

    point(11);
    EXPECT_EQ(read->text(QAccessible::Description), "80% · 02:00");

    show({{100, 40}, {0, 78}}, 7);
    EXPECT_EQ(read->text(QAccessible::Name), "Charge over the last 7 days: 40% to 78%, now 78%");

    content.notice = "Collecting history";
    chart.setContent(content);
    EXPECT_EQ(read->text(QAccessible::Name), "Collecting history");
    EXPECT_EQ(read->text(QAccessible::Description), "");
}

TEST_F(ChartWidgetTest, SurvivesContentWithoutPointsOrSpan)
{
    show({});
    point(3);
    press(Qt::Key_Left);
    EXPECT_EQ(reading(), "");

    content.until = content.from;
    chart.setContent(content);
    EXPECT_GT(painted(chart).width(), 0);
}

}  // namespace
}  // namespace vorlane::platform
