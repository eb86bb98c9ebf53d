// Places a window beside sway's bar through sway's IPC; a Wayland client cannot place its own
// windows.
#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>
#include <optional>

#include "platform/qt/placement/SwayIpc.h"
#include "platform/qt/placement/SwayTree.h"

namespace vorlane::platform {

// Does nothing if `ipc` is absent. When sway does not answer, the window stays where it is until it
// is opened again.
class SwayPlacer : public QObject {
    Q_OBJECT

public:
    // Places this process's windows with this title.
    SwayPlacer(const QString& title, std::optional<SwayIpc> ipc);

    // The width of the window's margin around the visible panel, for the shadow.
    void setMargin(int around) { margin = around; }

    // Call before the window is shown: makes sway float it. False without sway, or if it does not
    // answer.
    bool prepare();

    // Waits for sway to show the window, then moves it to the pointer and beside the bar.
    void placeAtPointer();

    // Call after a resize: moves the window beside the bar, without following the pointer.
    void placeAgain();

Q_SIGNALS:
    // The window was placed, or placing it failed and it stays where it is.
    void placed();

private:
    void start();
    void tryPlacing();
    void place(SwayWindow shown);
    std::optional<SwayWindow> find() { return findWindow(sway->tree(), name, margin); }

    std::optional<SwayIpc> sway;
    SwayWindowName name;
    int margin = 0;
    QTimer retry;
    QDeadlineTimer patience;
    bool hasRule = false;  // sway has the rule for our windows
    bool atPointer = false;
};

}  // namespace vorlane::platform
