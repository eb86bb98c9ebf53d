#include "platform/qt/AccessibleApplication.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QWindow>

#include "platform/qt/popover/PopoverWindow.h"

namespace vorlane::platform {

namespace {

QAccessibleInterface* make(const QString& /*className*/, QObject* object)
{
    return object == QCoreApplication::instance() ? new AccessibleApplication : nullptr;
}

}  // namespace

void AccessibleApplication::install()
{
    QAccessible::installFactory(make);
}

int AccessibleApplication::childCount() const
{
    return QAccessibleApplication::childCount() + static_cast<int>(popovers().size());
}

int AccessibleApplication::indexOfChild(const QAccessibleInterface* child) const
{
    const auto index = popovers().indexOf(child);
    if (index < 0) return QAccessibleApplication::indexOfChild(child);
    return QAccessibleApplication::childCount() + static_cast<int>(index);
}

QAccessibleInterface* AccessibleApplication::child(int index) const
{
    const auto others = QAccessibleApplication::childCount();
    if (index < others) return QAccessibleApplication::child(index);
    return popovers().value(index - others);
}

QList<QAccessibleInterface*> AccessibleApplication::popovers()
{
    QList<QAccessibleInterface*> found;
    for (const auto* const window : QGuiApplication::topLevelWindows()) {
        if (window->type() != Qt::Popup || !window->isVisible()) continue;
        auto* const root = window->accessibleRoot();
        if (root && qobject_cast<PopoverWindow*>(root->object())) found.append(root);
    }
    return found;
}

}  // namespace vorlane::platform
