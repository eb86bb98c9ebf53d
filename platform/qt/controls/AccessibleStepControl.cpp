#include "platform/qt/controls/AccessibleStepControl.h"

namespace vorlane::platform {

namespace {

QVariant variant(std::int64_t number)
{
    return QVariant::fromValue<qlonglong>(number);
}

QAccessibleInterface* make(const QString& /*className*/, QObject* object)
{
    auto* const control = qobject_cast<StepControl*>(object);
    return control ? new AccessibleStepControl(control) : nullptr;
}

}  // namespace

AccessibleStepControl::AccessibleStepControl(StepControl* control)
    : QAccessibleWidget(control, QAccessible::SpinBox)
{}

void AccessibleStepControl::install()
{
    QAccessible::installFactory(make);
}

void* AccessibleStepControl::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QString AccessibleStepControl::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Value) return QString::number(control().value());
    return QAccessibleWidget::text(kind);
}

QVariant AccessibleStepControl::currentValue() const
{
    return variant(control().value());
}

void AccessibleStepControl::setCurrentValue(const QVariant& value)
{
    if (control().isEnabled()) control().request(value.toLongLong());
}

QVariant AccessibleStepControl::minimumValue() const
{
    return variant(control().range().minimum);
}

QVariant AccessibleStepControl::maximumValue() const
{
    return variant(control().range().maximum);
}

QVariant AccessibleStepControl::minimumStepSize() const
{
    return variant(control().range().step);
}

QStringList AccessibleStepControl::actionNames() const
{
    return QStringList{increaseAction(), decreaseAction()} + QAccessibleWidget::actionNames();
}

void AccessibleStepControl::doAction(const QString& name)
{
    if (name == increaseAction()) return control().stepBy(1);
    if (name == decreaseAction()) return control().stepBy(-1);
    QAccessibleWidget::doAction(name);
}

StepControl& AccessibleStepControl::control() const
{
    return *static_cast<StepControl*>(object());
}

}  // namespace vorlane::platform
