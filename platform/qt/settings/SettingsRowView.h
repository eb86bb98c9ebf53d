// A settings row with a control. Notes are not rows.
#pragma once

#include <QWidget>

#include "App/content/SettingsContent.h"
#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

class SettingsRowView : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    // `row` has the type that the view was made for. Never calls an intent.
    virtual void showRow(const SettingsRow& row) = 0;
    virtual void setTheme(const Theme& theme) = 0;
};

}  // namespace vorlane::platform
