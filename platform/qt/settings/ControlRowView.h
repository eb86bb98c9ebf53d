// A settings row with its title at one side and its control at the other.
#pragma once

#include <QLabel>
#include <string>

#include "platform/qt/settings/SettingsRowView.h"

namespace vorlane::platform {

class ControlRowView : public SettingsRowView {
    Q_OBJECT

public:
    ControlRowView();

    void setTheme(const Theme& theme) final;

protected:
    virtual void setControlTheme(const Theme& theme) = 0;

    // Call once.
    void setControl(QWidget* widget);

    // Also the control's name for assistive programs.
    void setTitle(const std::string& text);

    void setControlEnabled(bool enabled);

private:
    void colorTitle();

    QLabel* title;
    QWidget* control = nullptr;
    Theme theme_;
};

}  // namespace vorlane::platform
