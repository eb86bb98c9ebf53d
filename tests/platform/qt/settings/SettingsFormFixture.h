// The settings form on an offscreen display. Finds controls by name and records intents.
#pragma once

#include <gmock/gmock.h>

#include <QtTest/qtestspontaneevent.h>
#include <QAccessible>
#include <QApplication>
#include <QTest>

#include "platform/qt/settings/SettingsForm.h"
#include "tests/platform/qt/support/SettingsSample.h"

namespace vorlane::platform {

class SettingsFormFixture : public testing::Test {
protected:
    SettingsFormFixture()
    {
        form.setContent(sampleSettings());
        form.resize(480, 640);
        form.show();
        form.activateWindow();
        QApplication::processEvents();
    }

    void show(const SettingsContent& content)
    {
        form.setContent(content);
        QApplication::processEvents();
    }

    // The nth control with this name that takes the keyboard focus.
    QWidget* control(const QString& name, int nth = 0) const
    {
        for (auto* const widget : controls()) {
            if (nameOf(widget) == name && nth-- == 0) return widget;
        }
        ADD_FAILURE() << "no control " << name.toStdString();
        return nullptr;
    }

    // In Tab order.
    std::vector<QWidget*> controls() const
    {
        std::vector<QWidget*> found;
        for (auto* widget = form.nextInFocusChain(); widget != &form;
             widget = widget->nextInFocusChain()) {
            const bool takesTab = (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
            if (takesTab && !widget->focusProxy()) found.push_back(widget);
        }
        return found;
    }

    static QAccessibleInterface& accessible(QWidget* widget)
    {
        return *QAccessible::queryAccessibleInterface(widget);
    }

    // The label's text if there is a label: the name of a combo box would be its current entry.
    static QString nameOf(QWidget* widget)
    {
        const auto labels = accessible(widget).relations(QAccessible::Label);
        auto* const named = labels.isEmpty() ? &accessible(widget) : labels.front().first;
        return named->text(QAccessible::Name);
    }

    static void wheel(QWidget* widget, int notches)
    {
        const QPointF middle = widget->rect().center();
        QWheelEvent event(middle, widget->mapToGlobal(middle), {}, {0, 120 * notches}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        // Marks the event as from the window system, so that Qt passes an ignored event to the
        // parent.
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(widget, &event);  // sendEvent() would mark it as not spontaneous
    }

    void note(const std::string& intent) { intents.push_back(intent); }

    std::vector<std::string> intents;
    SettingsForm form{
        {.setToggle = [this](const std::string& key,
                             bool value) { note(key + (value ? " on" : " off")); },
         .setNumber = [this](const std::string& key,
                             std::int64_t value) { note(key + " " + std::to_string(value)); },
         .setTime =
             [this](const std::string& key, TimeOfDay time) {
                 note(key + " " + std::to_string(time.hour) + ":" + std::to_string(time.minute));
             },
         .chooseSound = [this](const std::string& key,
                               const std::string& sound) { note(key + " " + sound); },
         .setLaunchAtLogin = [this](bool on) { note(on ? "login on" : "login off"); },
         .resetHistory = [this] { note("reset"); }}};
};

}  // namespace vorlane::platform
