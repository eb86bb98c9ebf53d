// How our own controls look alike: their sizes, their fill and the ring of the one with the
// keyboard.
#pragma once

#include <QFocusEvent>
#include <QPainter>
#include <QWidget>

#include "platform/qt/look/Theme.h"

namespace vorlane::platform {

// In device-independent pixels; they grow with the desktop's font.
struct ControlMetrics {
    explicit ControlMetrics(const QFont& body);

    int line = 0;    // a line of text
    int row = 0;     // the least height of a row
    int field = 0;   // the height of a control
    int indent = 0;  // from a card's edge to what lies in it
    double radius = 0.0;
};

// Around the shape of each control, so that its ring has room and all right edges meet.
constexpr int ringRoom = 3;

struct FieldState {
    bool enabled = true;
    bool pressed = false;
    bool hovered = false;
};

QColor fieldFill(const Theme& theme, FieldState state);

// Text on a card. Disabled is dimmed, never unreadable.
QColor textColor(const Theme& theme, bool enabled);

// Where a control with a ring is drawn.
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
