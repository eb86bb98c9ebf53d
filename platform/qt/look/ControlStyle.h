// The shared look of our controls: their sizes, their fill and the focus ring.
#pragma once

#include <QFocusEvent>
#include <QPainter>
#include <QWidget>

#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

// In device-independent pixels, scaled with the desktop's font.
struct ControlMetrics {
    explicit ControlMetrics(const QFont& body);

    int line = 0;    // a line of text
    int row = 0;     // the minimum height of a row
    int field = 0;   // the height of a control
    int indent = 0;  // between a card's edge and its content
    double radius = 0.0;
};

// The margin around each control's shape, with room for its focus ring. All controls have the same
// margin, so that their right edges align.
constexpr int ringRoom = 3;

struct FieldState {
    bool enabled = true;
    bool pressed = false;
    bool hovered = false;
};

QColor fieldFill(const Theme& theme, FieldState state);

// For text on a card. Disabled text is dimmed but stays readable.
QColor textColor(const Theme& theme, bool enabled);

// The control's rectangle without the margin for its focus ring.
QRectF shapeInRing(const QWidget& control);

void paintRing(QPainter& painter, const QRectF& shape, double radius, const Theme& theme);

// Whether to draw a control's focus ring: after keyboard use, not after a click.
class FocusRing : public QObject {
public:
    explicit FocusRing(QWidget& control);

    bool isVisible() const { return visible; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& control_;
    bool visible = false;
};

}  // namespace vorlane::platform
