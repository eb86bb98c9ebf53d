// One row of the settings window that holds a control. Notes are no rows here.
#pragma once

#include <QWidget>

#include "App/content/SettingsContent.h"
#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

class SettingsRowView : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    // `row` is of the type that the view was made for. Never an intent.
    virtual void showRow(const SettingsRow& row) = 0;
    virtual void setTheme(const Theme& theme) = 0;
};

}  // namespace vorlane::platform
