#include "platform/qt/settings/SettingsRows.h"

#include <QBoxLayout>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <utility>

#include "platform/qt/controls/DestructiveButton.h"
#include "platform/qt/controls/StepControl.h"
#include "platform/qt/controls/Switch.h"
#include "platform/qt/controls/TimeBox.h"
#include "platform/qt/settings/ControlRowView.h"
#include "platform/qt/settings/SoundBox.h"

namespace vorlane::platform {

namespace {

void showValue(StepControl& control, const StepperRow& row)
{
    control.setRange({.minimum = row.minimum, .maximum = row.maximum, .step = row.step});
    control.setValue(row.value);
}

void showValue(SoundBox& control, const SoundRow& row)
{
    control.setEntries(row.entries);
    control.setSound(row.value);
}

void showValue(TimeBox& control, const TimeRow& row)
{
    control.setTimeOfDay(row.time);
}

template <typename Row, typename Control>
class ValueRowView : public ControlRowView {
public:
    // `changed` outlives the view.
    template <typename Value>
    explicit ValueRowView(const std::function<void(const std::string& key, Value)>& changed)
        : control(new Control([this, &changed](Value value) { changed(key, value); }))
    {
        setControl(control);
    }

    void showRow(const SettingsRow& row) override
    {
        const auto& shown = std::get<Row>(row);
        key = shown.key;
        setTitle(shown.title);
        showValue(*control, shown);
        setControlEnabled(shown.enabled);
    }

protected:
    void setControlTheme(const Theme& theme) override { control->setTheme(theme); }

private:
    std::string key;
    Control* control;
};

// A row with a switch. A click anywhere on the row toggles it.
class SwitchRowView : public ControlRowView {
public:
    explicit SwitchRowView(std::function<void(const std::string& key, bool on)> switched)
        : control(new Switch)
    {
        setControl(control);
        // `toggled`, not `clicked`: assistive programs toggle without clicking.
        connect(control, &Switch::toggled, this,
                [this, call = std::move(switched)](bool on) { call(key, on); });
    }

    void showRow(const SettingsRow& row) override
    {
        const QSignalBlocker silent(control);  // only the user's changes are reported
        if (const auto* const login = std::get_if<LoginItemRow>(&row)) {
            setTitle(login->title);
            return control->setChecked(login->value);
        }
        const auto& toggle = std::get<ToggleRow>(row);
        key = toggle.key;
        setTitle(toggle.title);
        control->setChecked(toggle.value);
        setControlEnabled(toggle.enabled);
    }

protected:
    void setControlTheme(const Theme& theme) override { control->setTheme(theme); }

    void mousePressEvent(QMouseEvent* event) override
    {
        event->setAccepted(event->button() == Qt::LeftButton && control->isEnabled());
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        const auto position = event->position().toPoint();
        if (event->button() != Qt::LeftButton || !rect().contains(position)) return;
        control->setFocus(Qt::MouseFocusReason);
        control->click();
    }

private:
    std::string key;  // empty for the login item, which has none
    Switch* control;
};

class ButtonRowView : public SettingsRowView {
public:
    explicit ButtonRowView(const SettingsIntents& intents) : button(new DestructiveButton(this))
    {
        auto* const layout = new QVBoxLayout(this);
        layout->setContentsMargins({});
        layout->addWidget(button);
        setFocusProxy(button);
        connect(button, &DestructiveButton::clicked, this, [&intents] { intents.resetHistory(); });
    }

    void showRow(const SettingsRow& row) override
    {
        button->setText(QString::fromStdString(std::get<ResetRow>(row).title));
    }

    void setTheme(const Theme& theme) override { button->setTheme(theme); }

private:
    DestructiveButton* button;
};

struct Maker {
    const SettingsIntents& intents;

    SettingsRowView* operator()(const ToggleRow&) const
    {
        return new SwitchRowView(intents.setToggle);
    }
    SettingsRowView* operator()(const LoginItemRow&) const
    {
        return new SwitchRowView(
            [to = &intents](const std::string& /*key*/, bool on) { to->setLaunchAtLogin(on); });
    }
    SettingsRowView* operator()(const StepperRow&) const
    {
        return new ValueRowView<StepperRow, StepControl>(intents.setNumber);
    }
    SettingsRowView* operator()(const SoundRow&) const
    {
        return new ValueRowView<SoundRow, SoundBox>(intents.chooseSound);
    }
    SettingsRowView* operator()(const TimeRow&) const
    {
        return new ValueRowView<TimeRow, TimeBox>(intents.setTime);
    }
    SettingsRowView* operator()(const ResetRow&) const { return new ButtonRowView(intents); }
    SettingsRowView* operator()(const NoteRow&) const { return nullptr; }
};

}  // namespace

SettingsRowView* makeSettingsRowView(const SettingsRow& row, const SettingsIntents& intents)
{
    return std::visit(Maker{intents}, row);
}

}  // namespace vorlane::platform
