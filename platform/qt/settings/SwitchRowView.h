// A row that is on or off, and clickable from end to end.
#pragma once

#include <functional>
#include <string>

#include "platform/qt/controls/Switch.h"
#include "platform/qt/settings/ControlRowView.h"

namespace vorlane::platform {

class SwitchRowView : public ControlRowView {
    Q_OBJECT

public:
    // The key is empty for a toggle that stores nothing itself.
    explicit SwitchRowView(std::function<void(const std::string& key, bool on)> switched);

    void showRow(const SettingsRow& row) override;

protected:
    void setControlTheme(const Theme& theme) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    std::string key;
    Switch* control;
};

}  // namespace vorlane::platform
