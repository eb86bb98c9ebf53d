// The application as assistive programs see it. Qt leaves popups out of its list of windows; this
// adds the popover, in which users work as in any other window.
#pragma once

#include <QAccessible>
#include <QAccessibleObject>
#include <QList>

namespace vorlane::platform {

class AccessibleApplication : public QAccessibleApplication {
public:
    // Call once, after the application object was created.
    static void install();

    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* child(int index) const override;

private:
    static QList<QAccessibleInterface*> popovers();
};

}  // namespace vorlane::platform
