// The battery's charge as a ring that fills clockwise from the top, with the percentage in it.
#pragma once

#include <QLabel>

#include "App/content/PopoverContent.h"
#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

// A QLabel, so that a screen reader finds the percentage; the text is drawn by `paintText`.
class RingWidget : public Themed<QLabel> {
    Q_OBJECT

public:
    static constexpr int side = 104;

    explicit RingWidget(QWidget* parent = nullptr);

    void setContent(const RingContent& next);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintRing(QPainter& painter) const;
    void paintText(QPainter& painter) const;

    RingContent content;
};

}  // namespace vorlane::platform
