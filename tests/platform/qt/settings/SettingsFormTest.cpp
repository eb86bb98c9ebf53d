#include "platform/qt/settings/SettingsForm.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>
#include <QScrollBar>
#include <algorithm>
#include <set>

#include "platform/qt/controls/DestructiveButton.h"
#include "platform/qt/controls/Switch.h"
#include "tests/platform/qt/settings/SettingsFormFixture.h"

namespace vorlane::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SettingsFormTest : public SettingsFormFixture {
protected:
    // All visible texts, from top to bottom.
    std::vector<std::string> texts() const
    {
        std::vector<std::pair<int, std::string>> found;
        const auto add = [&](const QWidget* widget, const QString& text) {
            if (widget->isVisible() && !text.isEmpty())
                found.emplace_back(widget->mapTo(&form, QPoint()).y(), text.toStdString());
        };
        for (const auto* label : form.findChildren<QLabel*>()) add(label, label->text());
        for (const auto* button : form.findChildren<DestructiveButton*>())
            add(button, button->text());
        std::ranges::sort(found);
        std::vector<std::string> ordered;
        ordered.reserve(found.size());
        for (const auto& [y, text] : found) ordered.push_back(text);
        return ordered;
    }

    // The colour of the label whose text begins so.
    QColor colorOf(const QString& beginning) const
    {
        for (const auto* label : form.findChildren<QLabel*>()) {
            if (label->text().startsWith(beginning))
                return label->palette().color(QPalette::WindowText);
        }
        return {};
    }

    QScrollBar& bar() const { return *form.verticalScrollBar(); }
};

TEST_F(SettingsFormTest, ShowsEverySectionInOrder)
{
    EXPECT_THAT(texts(),
                ElementsAre("Alerts", "Charge limit", "Alert when charging reaches 80%",
                            "Repeat every 5 minutes, up to 3 times", "Sound", "Low battery",
                            "Alert on battery at 20% or less", "Sound", "Plugged in too long",
                            "Alert after 8 h plugged in above the charge limit", "Sound",
                            "Battery health below 80% (once)", "Sound", "Quiet hours",
                            "Hold alerts during quiet hours", "From", "Until", "Tray",
                            "Show percentage in the tray", "Show time remaining", "General",
                            "Launch at Login", "Reset History…",
                            testing::StartsWith("The laptop's firmware")));
}

TEST_F(SettingsFormTest, ShowsNotesWhereTheyBelongAndRemovesThem)
{
    const auto before = texts();

    show(sampleTroubledSettings());

    const auto all = texts();
    EXPECT_THAT(std::vector(all.begin() + 2, all.begin() + 5),
                ElementsAre("Alert when charging reaches 80%", testing::StartsWith("This laptop"),
                            "Repeat every 5 minutes, up to 3 times"));
    const auto login = std::ranges::find(all, "Launch at Login");
    ASSERT_NE(login, all.end());
    EXPECT_THAT(
        std::vector(login, all.end()),
        ElementsAre("Launch at Login", "Could not change Launch at Login: Permission denied",
                    "Reset History…", testing::StartsWith("Reminders need"),
                    testing::StartsWith("The laptop's firmware")));

    show(sampleSettings());

    EXPECT_EQ(texts(), before);
}

TEST_F(SettingsFormTest, ShowsNotesInTheirColours)
{
    const auto theme = Theme::of(form.palette(), form.font(), std::nullopt);
    show(sampleTroubledSettings());

    EXPECT_EQ(colorOf("Could not"), theme.red);
    EXPECT_EQ(colorOf("Reminders"), theme.orange);
    EXPECT_EQ(colorOf("The laptop's"), theme.secondary);
}

TEST_F(SettingsFormTest, RecoloursItsNotesWithTheTheme)
{
    show(sampleTroubledSettings());
    QPalette dark;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    const auto theme = Theme::of(dark, form.font(), std::nullopt);
    ASSERT_NE(colorOf("Could not"), theme.red);

    form.setTheme(theme);

    EXPECT_EQ(colorOf("Could not"), theme.red);
    EXPECT_EQ(colorOf("Reminders"), theme.orange);
    EXPECT_EQ(colorOf("The laptop's"), theme.secondary);
}

TEST_F(SettingsFormTest, KeepsShowingTheValuesOfDisabledControls)
{
    auto content = sampleSettings();
    content.sections[0] = sampleAlerts(false);
    std::get<SoundRow>(content.sections[0].rows[3]).value = "Purr";
    content.sections[4] = sampleQuietHours(false);
    form.setLocale(QLocale::c());

    show(content);

    EXPECT_FALSE(control("Repeat every 5 minutes, up to 3 times")->isEnabled());
    EXPECT_TRUE(
        qobject_cast<Switch*>(control("Repeat every 5 minutes, up to 3 times"))->isChecked());
    EXPECT_FALSE(control("Sound")->isEnabled());
    EXPECT_EQ(qobject_cast<QComboBox*>(control("Sound"))->currentText(), "Purr");
    EXPECT_FALSE(control("From")->isEnabled());
    EXPECT_EQ(qobject_cast<QAbstractSpinBox*>(control("From"))->text(), "22:00");
    EXPECT_FALSE(control("Alert when charging reaches 80%")->isEnabled());
    EXPECT_TRUE(control("Charge limit")->isEnabled());
}

TEST_F(SettingsFormTest, ListsTheSoundsWithADividerAfterNone)
{
    const auto* const box = qobject_cast<QComboBox*>(control("Sound"));

    EXPECT_EQ(box->count(), 17);
    EXPECT_EQ(box->itemText(0), "Default");
    EXPECT_EQ(box->itemText(1), "None");
    EXPECT_EQ(box->itemData(2, Qt::AccessibleDescriptionRole).toString(), "separator");
    EXPECT_EQ(box->itemText(3), "Glass");
    EXPECT_EQ(box->itemText(16), "Tink");
}

TEST_F(SettingsFormTest, ShowsAnUnlistedSoundWithoutSelectingIt)
{
    auto content = sampleSettings();
    std::get<SoundRow>(content.sections[0].rows[3]).value = "Thunder";

    show(content);

    const auto* const box = qobject_cast<QComboBox*>(control("Sound"));
    EXPECT_EQ(box->currentIndex(), -1);
    EXPECT_EQ(box->placeholderText(), "Thunder");
}

TEST_F(SettingsFormTest, ReusesItsWidgets)
{
    show(sampleTroubledSettings());
    show(sampleSettings());
    const auto before = form.findChildren<QWidget*>();

    for (int i = 0; i < 50; ++i) {
        show(sampleTroubledSettings());
        show(sampleSettings());
    }

    EXPECT_EQ(form.findChildren<QWidget*>(), before);
}

TEST_F(SettingsFormTest, ReportsNothingWhenItShowsNewContent)
{
    auto content = sampleTroubledSettings();
    std::get<StepperRow>(content.sections[1].rows[1]).value = 33;
    std::get<SoundRow>(content.sections[1].rows[2]).value = "Frog";
    std::get<TimeRow>(content.sections[4].rows[1]).time = {.hour = 3, .minute = 4};
    std::get<LoginItemRow>(content.sections[6].rows[0]).value = true;

    show(content);
    show(sampleSettings());

    EXPECT_THAT(intents, IsEmpty());
}

TEST_F(SettingsFormTest, KeepsTheFocusAndTheScrollPosition)
{
    auto* const toggle = control("Show time remaining");
    toggle->setFocus(Qt::TabFocusReason);
    const int position = bar().value();
    ASSERT_GT(position, 0);

    for (int i = 0; i < 5; ++i) {
        show(sampleSettings());
        EXPECT_EQ(QApplication::focusWidget(), toggle);
        EXPECT_EQ(bar().value(), position);
    }
}

TEST_F(SettingsFormTest, ScrollsToTheFocusedControl)
{
    auto content = sampleSettings();
    content.sections[4] = sampleQuietHours(true);
    show(content);
    for (auto* const widget : controls()) {
        widget->setFocus(Qt::TabFocusReason);
        QApplication::processEvents();
        const auto top = widget->mapTo(&form, QPoint());
        EXPECT_TRUE(form.rect().contains(QRect(top, widget->size())))
            << nameOf(widget).toStdString();
    }
}

TEST_F(SettingsFormTest, ScrollsByWheelOverUnfocusedControls)
{
    show(sampleTroubledSettings());
    for (auto* const widget : controls()) {
        if (widget->hasFocus()) widget->clearFocus();
        bar().setValue(100);
        wheel(widget, -1);
        EXPECT_GT(bar().value(), 100) << nameOf(widget).toStdString();
    }
    EXPECT_THAT(intents, IsEmpty());
}

TEST_F(SettingsFormTest, NamesEveryControlForAssistivePrograms)
{
    std::vector<std::pair<std::string, QAccessible::Role>> found;
    for (auto* const widget : controls())
        found.emplace_back(nameOf(widget).toStdString(), accessible(widget).role());

    using enum QAccessible::Role;
    const auto is = [](const char* name, QAccessible::Role role) {
        return std::pair<std::string, QAccessible::Role>(name, role);
    };
    EXPECT_THAT(
        found, ElementsAre(
                   is("Charge limit", CheckBox), is("Alert when charging reaches 80%", SpinBox),
                   is("Repeat every 5 minutes, up to 3 times", CheckBox), is("Sound", ComboBox),
                   is("Low battery", CheckBox), is("Alert on battery at 20% or less", SpinBox),
                   is("Sound", ComboBox), is("Plugged in too long", CheckBox),
                   is("Alert after 8 h plugged in above the charge limit", SpinBox),
                   is("Sound", ComboBox), is("Battery health below 80% (once)", CheckBox),
                   is("Sound", ComboBox), is("Hold alerts during quiet hours", CheckBox),
                   is("From", SpinBox), is("Until", SpinBox),
                   is("Show percentage in the tray", CheckBox), is("Show time remaining", CheckBox),
                   is("Launch at Login", CheckBox), is("Reset History…", Button)));
}

TEST_F(SettingsFormTest, FitsItsWidthAtTwiceTheFontSize)
{
    auto large = form.font();
    large.setPointSizeF(2 * large.pointSizeF());
    form.setTheme(Theme::of(form.palette(), large, std::nullopt));
    QApplication::processEvents();

    for (const auto* label : form.findChildren<QLabel*>()) {
        if (!label->isVisible()) continue;
        EXPECT_GE(label->height(), label->heightForWidth(label->width()))
            << label->text().toStdString();
        const auto longest = label->fontMetrics().horizontalAdvance("notifications");
        if (label->text().size() > 40) {
            EXPECT_GE(label->width(), longest);
        }
    }
    for (const auto* widget : controls()) {
        const auto right = widget->mapTo(&form, QPoint(widget->width(), 0)).x();
        EXPECT_LE(right, form.width());
        EXPECT_GE(widget->width(), widget->sizeHint().width());
    }
}

TEST_F(SettingsFormTest, AlignsAllControlsAtOneEdge)
{
    std::set<int> edges;
    for (const auto* widget : controls()) {
        if (qobject_cast<const DestructiveButton*>(widget)) continue;
        edges.insert(widget->mapTo(&form, QPoint(widget->width(), 0)).x());
    }
    EXPECT_EQ(edges.size(), 1U);
}

}  // namespace
}  // namespace vorlane::platform
