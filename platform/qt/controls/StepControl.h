// Two buttons that count a number up and down. The number itself is shown elsewhere.
#pragma once

#include <QBasicTimer>
#include <QWidget>
#include <cstdint>
#include <functional>

#include "platform/qt/look/ControlStyle.h"
#include "platform/qt/look/Themed.h"

namespace vorlane::platform {

class StepControl : public Themed<QWidget> {
    Q_OBJECT

public:
    struct Range {
        std::int64_t minimum = 0;
        std::int64_t maximum = 0;
        std::int64_t step = 1;

        friend bool operator==(const Range&, const Range&) = default;
    };

    // `changed` is called for the user's changes only, with a value inside the range.
    explicit StepControl(std::function<void(std::int64_t)> changed, QWidget* parent = nullptr);

    void setRange(Range bounds);

    // May lie outside the range; the first step brings it inside.
    void setValue(std::int64_t number);

    std::int64_t value() const { return value_; }
    const Range& range() const { return range_; }

    // Sets the value on the user's behalf, clamped to the range.
    void request(std::int64_t number);

    // Steps on the user's behalf, down if negative; stops at the ends of the range.
    void stepBy(std::int64_t steps);

    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    enum class Button { none, down, up };

    bool canStep(Button button) const;
    Button buttonAt(QPointF position) const;
    QRectF shapeOf(Button button) const;
    void paintButton(QPainter& painter, Button button) const;
    void store(std::int64_t number);
    void step(Button button);
    void hold(Button button);
    void release();

    std::function<void(std::int64_t)> changed_;
    FocusRing ring{*this};
    Range range_;
    std::int64_t value_ = 0;
    Button held = Button::none;
    Button hovered = Button::none;
    QBasicTimer repeating;
    int wheelAngle = 0;  // turned since the last full notch
};

}  // namespace vorlane::platform
