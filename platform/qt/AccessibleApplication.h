// The application as assistive programs see it. Qt leaves every popup out of its windows; ours is
// one that a person stays in, and has to be found.
#pragma once

#include <QAccessible>
#include <QAccessibleObject>
#include <QList>

namespace vorlane::platform {

class AccessibleApplication : public QAccessibleApplication {
public:
    // Once, when the application has been made.
    static void install();

    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* child(int index) const override;

private:
    static QList<QAccessibleInterface*> popovers();
};

}  // namespace vorlane::platform
