#include "platform/qt/settings/SettingsRows.h"

#include <QBoxLayout>
#include <utility>

#include "platform/qt/controls/DestructiveButton.h"
#include "platform/qt/controls/StepControl.h"
#include "platform/qt/controls/TimeBox.h"
#include "platform/qt/settings/ControlRowView.h"
#include "platform/qt/settings/SoundBox.h"
#include "platform/qt/settings/SwitchRowView.h"

namespace vorlane::platform {

namespace {

class StepperRowView : public ControlRowView {
public:
    explicit StepperRowView(const SettingsIntents& intents)
        : control(new StepControl(
              [this, &intents](std::int64_t value) { intents.setNumber(key, value); }))
    {
        hold(control);
    }

    void showRow(const SettingsRow& row) override
    {
        const auto& stepper = std::get<StepperRow>(row);
        key = stepper.key;
        setTitle(stepper.title);
        control->setRange(
            {.minimum = stepper.minimum, .maximum = stepper.maximum, .step = stepper.step});
        control->setValue(stepper.value);
        setAble(stepper.enabled);
    }

protected:
    void setControlTheme(const Theme& theme) override { control->setTheme(theme); }

private:
    std::string key;
    StepControl* control;
};

class SoundRowView : public ControlRowView {
public:
    explicit SoundRowView(const SettingsIntents& intents)
        : control(new SoundBox(
              [this, &intents](const std::string& sound) { intents.chooseSound(key, sound); }))
    {
        hold(control);
    }

    void showRow(const SettingsRow& row) override
    {
        const auto& sound = std::get<SoundRow>(row);
        key = sound.key;
        setTitle(sound.title);
        control->setEntries(sound.entries);
        control->setSound(sound.value);
        setAble(sound.enabled);
    }

protected:
    void setControlTheme(const Theme& theme) override { control->setTheme(theme); }

private:
    std::string key;
    SoundBox* control;
};

class TimeRowView : public ControlRowView {
public:
    explicit TimeRowView(const SettingsIntents& intents)
        : control(new TimeBox([this, &intents](TimeOfDay time) { intents.setTime(key, time); }))
    {
        hold(control);
    }

    void showRow(const SettingsRow& row) override
    {
        const auto& time = std::get<TimeRow>(row);
        key = time.key;
        setTitle(time.title);
        control->setTimeOfDay(time.time);
        setAble(time.enabled);
    }

protected:
    void setControlTheme(const Theme& theme) override { control->setTheme(theme); }

private:
    std::string key;
    TimeBox* control;
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

    SettingsRowView* operator()(const ToggleRow& /*kind*/) const
    {
        return new SwitchRowView(
            [to = &intents](const std::string& key, bool on) { to->setToggle(key, on); });
    }
    SettingsRowView* operator()(const LoginItemRow& /*kind*/) const
    {
        return new SwitchRowView(
            [to = &intents](const std::string& /*key*/, bool on) { to->setLaunchAtLogin(on); });
    }
    SettingsRowView* operator()(const StepperRow& /*kind*/) const
    {
        return new StepperRowView(intents);
    }
    SettingsRowView* operator()(const SoundRow& /*kind*/) const
    {
        return new SoundRowView(intents);
    }
    SettingsRowView* operator()(const TimeRow& /*kind*/) const { return new TimeRowView(intents); }
    SettingsRowView* operator()(const ResetRow& /*kind*/) const
    {
        return new ButtonRowView(intents);
    }
    SettingsRowView* operator()(const NoteRow& /*kind*/) const { return nullptr; }
};

}  // namespace

SettingsRowView* makeSettingsRowView(const SettingsRow& kind, const SettingsIntents& intents)
{
    return std::visit(Maker{intents}, kind);
}

}  // namespace vorlane::platform
