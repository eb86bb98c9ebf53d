// A widget that takes its font and colours from a theme.
#pragma once

#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

template <typename Widget, QFont Theme::*widgetFont = &Theme::body>
class Themed : public Widget {
public:
    using Widget::Widget;

    void setTheme(const Theme& next)
    {
        theme = next;
        this->setFont(theme.*widgetFont);
        this->updateGeometry();
        this->update();
    }

protected:
    Theme theme;
};

}  // namespace vorlane::platform
