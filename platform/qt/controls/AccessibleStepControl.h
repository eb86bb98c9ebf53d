// A step control as assistive programs see it: a spin box.
#pragma once

#include <QAccessibleWidget>

#include "platform/qt/controls/StepControl.h"

namespace vorlane::platform {

class AccessibleStepControl : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleStepControl(StepControl* control);

    // For every step control there will be; once is enough, more does no harm.
    static void install();

    void* interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text kind) const override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant minimumValue() const override;
    QVariant maximumValue() const override;
    QVariant minimumStepSize() const override;

    QStringList actionNames() const override;
    void doAction(const QString& name) override;

private:
    StepControl& control() const;
};

}  // namespace vorlane::platform
