#include "platform/qt/controls/StepControl.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainterPath>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

namespace vorlane::platform {

namespace {

// Presents the control as a spin box to assistive programs.
class AccessibleStepControl : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleStepControl(StepControl* stepControl)
        : QAccessibleWidget(stepControl, QAccessible::SpinBox), control(*stepControl)
    {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text which) const override
    {
        if (which == QAccessible::Value) return QString::number(control.value());
        return QAccessibleWidget::text(which);
    }

    QVariant currentValue() const override { return variant(control.value()); }
    QVariant minimumValue() const override { return variant(control.range().minimum); }
    QVariant maximumValue() const override { return variant(control.range().maximum); }
    QVariant minimumStepSize() const override { return variant(control.range().step); }
    void setCurrentValue(const QVariant& value) override
    {
        if (control.isEnabled()) control.request(value.toLongLong());
    }

    QStringList actionNames() const override
    {
        return QStringList{increaseAction(), decreaseAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override
    {
        if (name == increaseAction()) return control.stepBy(1);
        if (name == decreaseAction()) return control.stepBy(-1);
        QAccessibleWidget::doAction(name);
    }

private:
    static QVariant variant(std::int64_t number) { return qlonglong{number}; }

    StepControl& control;
};

QAccessibleInterface* makeAccessible(const QString& /*className*/, QObject* object)
{
    auto* const control = qobject_cast<StepControl*>(object);
    return control ? new AccessibleStepControl(control) : nullptr;
}

constexpr std::int64_t page = 10;  // steps
constexpr int notch = 120;         // of a wheel, in eighths of a degree

}  // namespace

StepControl::StepControl(std::function<void(std::int64_t)> changed, QWidget* parent)
    : Themed(parent), changed_(std::move(changed))
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setMouseTracking(true);
    QAccessible::installFactory(makeAccessible);  // repeated calls change nothing
}

void StepControl::setRange(Range bounds)
{
    if (bounds == range_) return;
    range_ = bounds;
    update();
}

void StepControl::setValue(std::int64_t number)
{
    if (number != value_) store(number);
}

void StepControl::request(std::int64_t number)
{
    const auto inside = std::max(range_.minimum, std::min(number, range_.maximum));
    if (inside == value_) return;
    store(inside);
    changed_(inside);
}

void StepControl::stepBy(std::int64_t steps)
{
    if (canStep(steps < 0 ? Button::down : Button::up)) request(value_ + steps * range_.step);
}

void StepControl::store(std::int64_t number)
{
    value_ = number;
    QAccessibleValueChangeEvent event(this, QVariant::fromValue<qlonglong>(number));
    QAccessible::updateAccessibility(&event);
    update();
}

bool StepControl::canStep(Button button) const
{
    if (!isEnabled()) return false;
    return button == Button::down ? value_ > range_.minimum : value_ < range_.maximum;
}

QSize StepControl::sizeHint() const
{
    const ControlMetrics metrics(theme.body);
    const int side = qRound(1.75 * metrics.line);
    return {2 * side + 2 * ringRoom, metrics.field + 2 * ringRoom};
}

QRectF StepControl::shapeOf(Button button) const
{
    const auto whole = shapeInRing(*this);
    if (button == Button::none) return whole;
    const bool left = (button == Button::down) != isRightToLeft();
    const double half = whole.width() / 2;
    return left ? whole.adjusted(0, 0, -half, 0) : whole.adjusted(half, 0, 0, 0);
}

StepControl::Button StepControl::buttonAt(QPointF position) const
{
    for (const auto button : {Button::down, Button::up}) {
        if (shapeOf(button).contains(position)) return button;
    }
    return Button::none;
}

void StepControl::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto whole = shapeOf(Button::none);
    const double radius = ControlMetrics(theme.body).radius;

    painter.save();
    QPainterPath outline;
    outline.addRoundedRect(whole, radius, radius);
    painter.setClipPath(outline);
    paintButton(painter, Button::down);
    paintButton(painter, Button::up);
    painter.restore();

    const auto middle = QPointF(whole.center().x(), whole.top() + whole.height() * 0.25);
    painter.setPen(QPen(fieldFill(theme, {.pressed = true}), 1));
    painter.drawLine(middle, middle + QPointF(0, whole.height() * 0.5));
    if (ring.isVisible()) paintRing(painter, whole, radius, theme);
}

void StepControl::paintButton(QPainter& painter, Button button) const
{
    const auto shape = shapeOf(button);
    const bool able = canStep(button);
    painter.fillRect(shape, fieldFill(theme, {.enabled = isEnabled(),
                                              .pressed = able && held == button,
                                              .hovered = able && hovered == button}));

    auto color = textColor(theme, isEnabled());
    if (!able) color.setAlphaF(0.45F);
    const double arm = 0.32 * ControlMetrics(theme.body).line;
    painter.setPen(QPen(color, std::max(1.5, arm * 0.3), Qt::SolidLine, Qt::RoundCap));
    const auto center = shape.center();
    painter.drawLine(center - QPointF(arm, 0), center + QPointF(arm, 0));
    if (button == Button::up) painter.drawLine(center - QPointF(0, arm), center + QPointF(0, arm));
}

void StepControl::step(Button button)
{
    stepBy(button == Button::down ? -1 : 1);
}

void StepControl::hold(Button button)
{
    held = button;
    update();
    repeating.start(style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatThreshold), this);
    step(button);
}

void StepControl::release()
{
    repeating.stop();
    held = Button::none;
    update();
}

void StepControl::mousePressEvent(QMouseEvent* event)
{
    const auto button = buttonAt(event->position());
    if (event->button() != Qt::LeftButton || button == Button::none) return event->ignore();
    hold(button);
}

void StepControl::mouseMoveEvent(QMouseEvent* event)
{
    const auto button = buttonAt(event->position());
    if (held != Button::none && button != held) release();
    if (button == hovered) return;
    hovered = button;
    update();
}

void StepControl::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    release();
}

void StepControl::leaveEvent(QEvent* /*event*/)
{
    hovered = Button::none;
    update();
}

// Without keyboard focus, the wheel scrolls the form instead.
void StepControl::wheelEvent(QWheelEvent* event)
{
    if (!hasFocus() || !rect().contains(event->position().toPoint())) return event->ignore();
    wheelAngle += event->angleDelta().y();
    const int notches = wheelAngle / notch;
    wheelAngle -= notches * notch;
    if (notches != 0) stepBy(notches);
    event->accept();
}

void StepControl::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
        case Qt::Key_Up:
        case Qt::Key_Plus:
            return stepBy(1);
        case Qt::Key_Down:
        case Qt::Key_Minus:
            return stepBy(-1);
        case Qt::Key_Right:
            return stepBy(isRightToLeft() ? -1 : 1);
        case Qt::Key_Left:
            return stepBy(isRightToLeft() ? 1 : -1);
        case Qt::Key_PageUp:
            return stepBy(page);
        case Qt::Key_PageDown:
            return stepBy(-page);
        case Qt::Key_Home:
            return request(range_.minimum);
        case Qt::Key_End:
            return request(range_.maximum);
        default:
            QWidget::keyPressEvent(event);
    }
}

bool StepControl::event(QEvent* event)
{
    const auto type = event->type();
    if (type == QEvent::FocusIn) wheelAngle = 0;
    if (type == QEvent::FocusOut || type == QEvent::Hide || type == QEvent::EnabledChange)
        release();
    return QWidget::event(event);
}

void StepControl::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != repeating.timerId()) return QWidget::timerEvent(event);
    if (!canStep(held)) return repeating.stop();
    repeating.start(style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatRate), this);
    step(held);
}

}  // namespace vorlane::platform
