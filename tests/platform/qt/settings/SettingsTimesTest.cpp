#include <QAbstractSpinBox>
#include <QLineEdit>
#include <algorithm>
#include <iterator>
#include <utility>

#include "tests/platform/qt/settings/SettingsFormFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SettingsTimesTest : public SettingsFormFixture {
protected:
    SettingsTimesTest()
    {
        form.setLocale(QLocale::c());
        showUntil({.hour = 7, .minute = 0});
    }

    void showUntil(TimeOfDay time)
    {
        auto content = sampleSettings();
        content.sections[4] = sampleQuietHours(true);
        std::get<TimeRow>(content.sections[4].rows[2]).time = time;
        show(content);
    }

    QAbstractSpinBox* box(const char* title) const
    {
        return qobject_cast<QAbstractSpinBox*>(control(title));
    }

    // Focuses the control by pressing Tab on the one before.
    QAbstractSpinBox* reach(const char* title)
    {
        auto* const wanted = box(title);
        const auto order = controls();
        auto* const before = *std::prev(std::ranges::find(order, wanted));
        before->setFocus(Qt::OtherFocusReason);
        QTest::keyClick(before, Qt::Key_Tab);
        EXPECT_TRUE(wanted->hasFocus());
        return wanted;
    }

    static void type(QWidget* widget, const QString& text)
    {
        for (const auto letter : text)
            QTest::sendKeyEvent(QTest::Click, widget, Qt::Key(letter.toUpper().unicode()), letter,
                                {});
    }

    // Types the text, presses Enter and returns what the box then shows.
    std::string enter(const QString& text)
    {
        auto* const until = reach("Until");
        type(until, text);
        EXPECT_EQ(until->text(), text);
        QTest::keyClick(until, Qt::Key_Return);
        return until->text().toStdString();
    }

    std::vector<std::string> takeIntents() { return std::exchange(intents, {}); }
};

TEST_F(SettingsTimesTest, ReportsATypedTimeOnce)
{
    auto* const until = reach("Until");

    QTest::keyClicks(until, "06:30");
    QTest::keyClick(until, Qt::Key_Return);
    until->clearFocus();

    EXPECT_THAT(intents, ElementsAre("quietEnd 6:30"));
}

TEST_F(SettingsTimesTest, ReportsATypedTimeWhenTheFocusLeaves)
{
    QTest::keyClicks(reach("Until"), "0630");
    control("Launch at Login")->setFocus(Qt::MouseFocusReason);

    EXPECT_THAT(intents, ElementsAre("quietEnd 6:30"));
    EXPECT_EQ(box("Until")->text(), "06:30");
}

TEST_F(SettingsTimesTest, AcceptsTheFormatThatItShows)
{
    for (const auto* const locale : {"C", "en_US", "en_CA", "es_MX", "zh_TW", "zh_HK", "de_DE",
                                     "ar_EG", "fa_IR", "ko_KR", "fr_CA", "hi_IN", "el_GR"}) {
        form.setLocale(QLocale(locale));
        for (const auto& [hour, minute] :
             {std::pair{0, 0}, {0, 30}, {9, 5}, {12, 0}, {12, 30}, {21, 30}, {23, 59}}) {
            showUntil({.hour = hour, .minute = minute});
            const auto shown = box("Until")->text();
            showUntil({.hour = 7, .minute = 1});
            intents.clear();

            EXPECT_EQ(enter(shown), shown.toStdString()) << locale;
            EXPECT_THAT(takeIntents(), ElementsAre("quietEnd " + std::to_string(hour) + ":" +
                                                   std::to_string(minute)))
                << locale << ' ' << shown.toStdString();
        }
    }
}

TEST_F(SettingsTimesTest, AcceptsTimesIn12Or24Hours)
{
    for (const auto* const locale :
         {"C", "en_US", "en_CA", "es_MX", "zh_TW", "de_DE", "ar_EG", "fa_IR"}) {
        form.setLocale(QLocale(locale));
        for (const auto* const text :
             {"21:30", "21.30", "2130", "9:30 PM", "9:30pm", "9.30 p. m.", "930p"}) {
            showUntil({.hour = 7, .minute = 0});
            const auto before = box("Until")->text();
            intents.clear();

            EXPECT_NE(enter(text), before.toStdString());
            EXPECT_THAT(takeIntents(), ElementsAre("quietEnd 21:30")) << locale << ' ' << text;
        }
    }
}

TEST_F(SettingsTimesTest, RestoresTheTimeWhenTheTypedTextIsNotATime)
{
    for (const auto* const text : {"25:00", "soon", "21:30:15", ":"}) {
        EXPECT_EQ(enter(text), "07:00");
        type(reach("Until"), text);
        reach("From");
        EXPECT_EQ(box("Until")->text(), "07:00");
    }
    QTest::keyClick(reach("Until"), Qt::Key_Delete);
    EXPECT_EQ(box("Until")->text(), "");
    reach("From");
    EXPECT_EQ(box("Until")->text(), "07:00");
    EXPECT_THAT(intents, IsEmpty());
}

TEST_F(SettingsTimesTest, SelectsTheWholeTimeWhenFocusedByKey)
{
    for (const auto* const locale : {"en_US", "zh_TW", "ar_EG"}) {
        form.setLocale(QLocale(locale));
        EXPECT_EQ(box("Until")->findChild<QLineEdit*>()->selectedText(), "");
        EXPECT_EQ(reach("Until")->findChild<QLineEdit*>()->selectedText(), box("Until")->text());
        QTest::keyClick(box("Until"), Qt::Key_Tab, Qt::ShiftModifier);
        EXPECT_TRUE(box("From")->hasFocus());
        EXPECT_EQ(box("From")->findChild<QLineEdit*>()->selectedText(), box("From")->text());
    }
}

TEST_F(SettingsTimesTest, ReplacesTheWholeTimeWhenAProgramHasFocusedIt)
{
    box("Until")->setFocus(Qt::OtherFocusReason);  // as assistive programs do
    showUntil({.hour = 9, .minute = 15});

    QTest::keyClicks(box("Until"), "0630");
    QTest::keyClick(box("Until"), Qt::Key_Return);
    QTest::keyClicks(box("Until"), "0645");
    QTest::keyClick(box("Until"), Qt::Key_Return);

    EXPECT_THAT(intents, ElementsAre("quietEnd 6:30", "quietEnd 6:45"));
}

TEST_F(SettingsTimesTest, KeepsTheOtherDigitsWhenOneIsTypedAfterAClick)
{
    auto* const until = box("Until");
    auto* const edit = until->findChild<QLineEdit*>();
    QTest::mouseClick(edit, Qt::LeftButton, {},
                      edit->rect().center() + QPoint(edit->width() / 2 - 1, 0));

    QTest::keyClick(until, Qt::Key_Backspace);
    QTest::keyClick(until, Qt::Key_5);
    QTest::keyClick(until, Qt::Key_Return);

    EXPECT_THAT(intents, ElementsAre("quietEnd 7:5"));
}

TEST_F(SettingsTimesTest, StepsByArrowKeysAndWheelWhereTheCursorIs)
{
    auto* const until = reach("Until");

    QTest::keyClick(until, Qt::Key_Up);
    QTest::keyClick(until, Qt::Key_Up);
    wheel(until, -1);
    QTest::keyClick(until, Qt::Key_End);
    QTest::keyClick(until, Qt::Key_Down);
    wheel(until, 3);
    QTest::keyClick(until, Qt::Key_Home);
    QTest::keyClick(until, Qt::Key_PageUp);
    QTest::keyClick(until, Qt::Key_PageUp);

    EXPECT_THAT(intents,
                ElementsAre("quietEnd 8:0", "quietEnd 9:0", "quietEnd 8:0", "quietEnd 8:59",
                            "quietEnd 8:2", "quietEnd 18:2", "quietEnd 4:2"));
}

TEST_F(SettingsTimesTest, StepsBetweenAmAndPm)
{
    for (const auto& [locale, key] :
         {std::pair{"en_US", Qt::Key_End}, {"ar_EG", Qt::Key_End}, {"ko_KR", Qt::Key_Home}}) {
        form.setLocale(QLocale(locale));
        auto* const until = reach("Until");
        QTest::keyClick(until, key);
        for (int i = 0; i < 3; ++i) QTest::keyClick(until, Qt::Key_Up);

        EXPECT_THAT(takeIntents(), ElementsAre("quietEnd 19:0", "quietEnd 7:0", "quietEnd 19:0"))
            << locale;
        QTest::keyClick(until, Qt::Key_Down);
        intents.clear();
    }
}

TEST_F(SettingsTimesTest, StepsTheNumberNextToAWordOfA24HourFormat)
{
    form.setLocale(QLocale("bg_BG"));  // "7:00 ч."
    QTest::keyClick(reach("Until"), Qt::Key_End);
    QTest::keyClick(box("Until"), Qt::Key_Up);

    form.setLocale(QLocale("nds_DE"));  // "Kl. 7.01"
    QTest::keyClick(reach("Until"), Qt::Key_Home);
    QTest::keyClick(box("Until"), Qt::Key_Up);

    EXPECT_THAT(intents, ElementsAre("quietEnd 7:1", "quietEnd 8:1"));
}

TEST_F(SettingsTimesTest, StepsFromTheTypedTime)
{
    auto* const until = reach("Until");

    QTest::keyClicks(until, "9pm");
    QTest::keyClick(until, Qt::Key_Home);
    QTest::keyClick(until, Qt::Key_Up);

    EXPECT_THAT(intents, ElementsAre("quietEnd 22:0"));
    EXPECT_EQ(until->text(), "22:00");
}

TEST_F(SettingsTimesTest, KeepsHalfTypedTextWhenNewContentArrives)
{
    auto* const until = reach("Until");
    QTest::keyClicks(until, "06:3");

    showUntil({.hour = 9, .minute = 15});
    EXPECT_EQ(until->text(), "06:3");
    QTest::keyClicks(until, "0");
    QTest::keyClick(until, Qt::Key_Return);

    EXPECT_THAT(intents, ElementsAre("quietEnd 6:30"));
}

TEST_F(SettingsTimesTest, FollowsNewContentAgainAfterEditing)
{
    type(reach("Until"), "07:00");
    reach("From");
    showUntil({.hour = 9, .minute = 15});
    EXPECT_EQ(box("Until")->text(), "09:15");

    EXPECT_EQ(enter("soon"), "09:15");
    showUntil({.hour = 10, .minute = 0});
    EXPECT_EQ(box("Until")->text(), "10:00");
    EXPECT_THAT(intents, IsEmpty());
}

TEST_F(SettingsTimesTest, WritesTimesInTheLocalesFormat)
{
    auto* const until = box("Until");

    form.setLocale(QLocale("en_US"));
    EXPECT_EQ(until->text().simplified(), "7:00 AM");
    form.setLocale(QLocale("de_DE"));
    EXPECT_EQ(until->text(), "07:00");
    form.setLocale(QLocale("zh_TW"));
    EXPECT_EQ(until->text(), "上午7:00");
    form.setLocale(QLocale::c());
    EXPECT_EQ(until->text(), "07:00");
    EXPECT_EQ(accessible(until).text(QAccessible::Value), "07:00");
    EXPECT_THAT(intents, IsEmpty());
}

}  // namespace
}  // namespace vorlane::platform
