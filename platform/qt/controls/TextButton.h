// A button as large as its text and the margins around it.
#pragma once

#include <QAbstractButton>

#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

template <typename Button, QFont Theme::*textFont>
class TextButton : public Themed<Button, textFont> {
public:
    TextButton(QSize textMargins, QWidget* parent)
        : Themed<Button, textFont>(parent), margins(textMargins)
    {
        this->setAttribute(Qt::WA_Hover);
        this->setFocusPolicy(Qt::TabFocus);  // a click shows no focus ring
        this->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override
    {
        const auto metrics = this->fontMetrics();
        return QSize(metrics.horizontalAdvance(this->text()), metrics.height()) + 2 * margins;
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    QSize margins;  // width at either side, height above and below
};

}  // namespace vorlane::platform
