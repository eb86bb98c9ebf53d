#include <QComboBox>
#include <QStyle>
#include <limits>

#include "platform/qt/controls/StepControl.h"
#include "platform/qt/controls/Switch.h"
#include "tests/platform/qt/settings/SettingsFormFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SettingsIntentsTest : public SettingsFormFixture {
protected:
    QWidget* limit() const { return control("Alert when charging reaches 80%"); }

    void press(QWidget* widget, Qt::Key key)
    {
        widget->setFocus(Qt::TabFocusReason);
        QTest::keyClick(widget, key);
    }

    void showLimit(std::int64_t value)
    {
        auto content = sampleSettings();
        std::get<StepperRow>(content.sections[0].rows[1]).value = value;
        show(content);
    }

    // Holds the button until it has repeated the step.
    void holdPlus()
    {
        QTest::mousePress(limit(), Qt::LeftButton, {}, plus(limit()));
        ASSERT_TRUE(QTest::qWaitFor([&] { return intents.size() >= 2; }));
    }

    void expectNoMoreSteps()
    {
        intents.clear();
        const int rate = limit()->style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatRate);
        EXPECT_FALSE(QTest::qWaitFor([&] { return !intents.empty(); }, 3 * rate));
    }

    static QPoint minus(const QWidget* stepper)
    {
        return {stepper->width() / 4, stepper->height() / 2};
    }
    static QPoint plus(const QWidget* stepper)
    {
        return {stepper->width() * 3 / 4, stepper->height() / 2};
    }
};

TEST_F(SettingsIntentsTest, TogglesByClickAndByKey)
{
    QTest::mouseClick(control("Charge limit"), Qt::LeftButton);
    press(control("Show time remaining"), Qt::Key_Space);

    EXPECT_THAT(intents, ElementsAre("limitEnabled off", "showTime on"));
}

TEST_F(SettingsIntentsTest, TogglesByAClickAnywhereOnItsRow)
{
    auto* const row = control("Low battery")->parentWidget();

    QTest::mouseClick(row, Qt::LeftButton, {}, {20, row->height() / 2});
    QTest::mouseClick(row, Qt::RightButton, {}, {20, row->height() / 2});

    EXPECT_THAT(intents, ElementsAre("lowEnabled off"));
}

TEST_F(SettingsIntentsTest, DoesNotToggleDisabledControls)
{
    show(sampleTroubledSettings());
    auto* const toggle = control("Repeat every 5 minutes, up to 3 times");

    QTest::mouseClick(toggle->parentWidget(), Qt::LeftButton, {}, {20, 10});
    QTest::mouseClick(toggle, Qt::LeftButton);

    EXPECT_THAT(intents, IsEmpty());
}

TEST_F(SettingsIntentsTest, ShowsTheRealStateAgainWhenLaunchAtLoginFails)
{
    auto* const toggle = qobject_cast<Switch*>(control("Launch at Login"));

    QTest::mouseClick(toggle, Qt::LeftButton);
    show(sampleSettings());

    EXPECT_THAT(intents, ElementsAre("login on"));
    EXPECT_FALSE(toggle->isChecked());
}

TEST_F(SettingsIntentsTest, StepsByButtons)
{
    QTest::mouseClick(limit(), Qt::LeftButton, {}, plus(limit()));
    QTest::mouseClick(limit(), Qt::LeftButton, {}, minus(limit()));
    QTest::mouseClick(limit(), Qt::LeftButton, {}, minus(limit()));

    EXPECT_THAT(intents, ElementsAre("limit 81", "limit 80", "limit 79"));
}

TEST_F(SettingsIntentsTest, StepsByKeys)
{
    for (const auto key :
         {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End}) {
        press(limit(), key);
    }

    EXPECT_THAT(intents, ElementsAre("limit 81", "limit 80", "limit 90", "limit 80", "limit 50",
                                     "limit 100"));
}

TEST_F(SettingsIntentsTest, StepsByWheelWhenFocused)
{
    limit()->setFocus(Qt::MouseFocusReason);

    wheel(limit(), 1);
    wheel(limit(), -2);

    EXPECT_THAT(intents, ElementsAre("limit 81", "limit 79"));
}

TEST_F(SettingsIntentsTest, RepeatsStepsWhileAButtonIsHeld)
{
    QTest::mousePress(limit(), Qt::LeftButton, {}, plus(limit()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return intents.size() >= 3; }));
    QTest::mouseRelease(limit(), Qt::LeftButton, {}, plus(limit()));

    EXPECT_EQ(intents[0], "limit 81");
    EXPECT_EQ(intents[1], "limit 82");
    EXPECT_EQ(intents[2], "limit 83");
}

TEST_F(SettingsIntentsTest, StopsRepeatingWhenTheButtonIsReleased)
{
    holdPlus();

    QTest::mouseRelease(limit(), Qt::LeftButton, {}, plus(limit()));

    expectNoMoreSteps();
}

TEST_F(SettingsIntentsTest, StopsRepeatingWhenThePointerLeavesTheButton)
{
    holdPlus();

    QTest::mouseMove(limit(), minus(limit()));

    expectNoMoreSteps();
}

TEST_F(SettingsIntentsTest, StopsRepeatingWhenItLosesTheFocus)
{
    limit()->setFocus();
    holdPlus();

    control("Charge limit")->setFocus();

    expectNoMoreSteps();
}

TEST_F(SettingsIntentsTest, StopsAtTheEndsOfTheRange)
{
    showLimit(100);
    QTest::mouseClick(limit(), Qt::LeftButton, {}, plus(limit()));
    press(limit(), Qt::Key_Up);
    press(limit(), Qt::Key_PageUp);
    press(limit(), Qt::Key_End);
    EXPECT_THAT(intents, IsEmpty());

    showLimit(99);
    press(limit(), Qt::Key_PageUp);
    EXPECT_THAT(intents, ElementsAre("limit 100"));

    showLimit(50);
    press(limit(), Qt::Key_Down);
    wheel(limit(), -1);
    EXPECT_THAT(intents, SizeIs(1));
}

TEST_F(SettingsIntentsTest, StepsFromOutsideIntoTheRange)
{
    showLimit(150);
    EXPECT_EQ(accessible(limit()).valueInterface()->currentValue().toInt(), 150);
    press(limit(), Qt::Key_Up);
    EXPECT_THAT(intents, IsEmpty());
    press(limit(), Qt::Key_Down);
    EXPECT_THAT(intents, ElementsAre("limit 100"));

    showLimit(std::numeric_limits<std::int64_t>::min());
    press(limit(), Qt::Key_Down);
    press(limit(), Qt::Key_Up);
    EXPECT_THAT(intents, ElementsAre("limit 100", "limit 50"));
}

TEST_F(SettingsIntentsTest, StepsForAssistivePrograms)
{
    auto& value = *accessible(limit()).valueInterface();
    auto& actions = *accessible(limit()).actionInterface();

    EXPECT_EQ(value.currentValue().toInt(), 80);
    EXPECT_EQ(value.minimumValue().toInt(), 50);
    EXPECT_EQ(value.maximumValue().toInt(), 100);
    value.setCurrentValue(90);
    value.setCurrentValue(1000);
    actions.doAction(QAccessibleActionInterface::decreaseAction());

    EXPECT_THAT(intents, ElementsAre("limit 90", "limit 100", "limit 99"));
}

TEST_F(SettingsIntentsTest, ReportsAChosenSoundOnce)
{
    auto* const box = qobject_cast<QComboBox*>(control("Sound"));

    press(box, Qt::Key_Down);
    press(box, Qt::Key_Down);  // skips the divider
    press(box, Qt::Key_Home);
    press(box, Qt::Key_Home);

    EXPECT_THAT(intents, ElementsAre("limitSound none", "limitSound Glass", "limitSound default"));
}

TEST_F(SettingsIntentsTest, RequestsTheResetByClickAndByKey)
{
    QTest::mouseClick(control("Reset History…"), Qt::LeftButton);
    press(control("Reset History…"), Qt::Key_Return);

    EXPECT_THAT(intents, ElementsAre("reset", "reset"));
}

}  // namespace
}  // namespace vorlane::platform
