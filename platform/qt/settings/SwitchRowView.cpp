#include "platform/qt/settings/SwitchRowView.h"

#include <QMouseEvent>
#include <QSignalBlocker>
#include <utility>

namespace vorlane::platform {

SwitchRowView::SwitchRowView(std::function<void(const std::string& key, bool on)> switched)
    : control(new Switch)
{
    hold(control);
    // Toggled, not clicked: assistive programs toggle.
    connect(control, &Switch::toggled, this,
            [this, call = std::move(switched)](bool on) { call(key, on); });
}

void SwitchRowView::showRow(const SettingsRow& row)
{
    const QSignalBlocker silent(control);  // to show a value is no wish of the user's
    if (const auto* const login = std::get_if<LoginItemRow>(&row)) {
        setTitle(login->title);
        return control->setChecked(login->value);
    }
    const auto& toggle = std::get<ToggleRow>(row);
    key = toggle.key;
    setTitle(toggle.title);
    control->setChecked(toggle.value);
    setAble(toggle.enabled);
}

void SwitchRowView::setControlTheme(const Theme& theme)
{
    control->setTheme(theme);
}

void SwitchRowView::mousePressEvent(QMouseEvent* event)
{
    event->setAccepted(event->button() == Qt::LeftButton && control->isEnabled());
}

void SwitchRowView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint())) return;
    control->setFocus(Qt::MouseFocusReason);
    control->click();
}

}  // namespace vorlane::platform
