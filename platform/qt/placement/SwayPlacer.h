// Puts a window beside sway's bar, which no Wayland client can do for itself.
#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>
#include <optional>

#include "platform/qt/placement/SwayIpc.h"
#include "platform/qt/placement/SwayTree.h"

namespace vorlane::platform {

// Does nothing outside of sway. When sway does not answer, the window stays where it is until it is
// opened again.
class SwayPlacer : public QObject {
    Q_OBJECT

public:
    // Windows of this title are told by it, and by being our process's.
    explicit SwayPlacer(const QString& title);

    // Around the visible panel, for its shadow.
    void setMargin(int around) { margin = around; }

    // Before the window is shown: has sway float it. False when it will not be placed.
    bool prepare();

    // As soon as sway shows the window: moves it to the pointer and beside the bar.
    void placeAtPointer();

    // After a change of its size: beside the bar, where it is.
    void placeAgain();

Q_SIGNALS:
    // The window is in its place, or stays where it is.
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
    bool ruled = false;  // sway has the rule for our windows
    bool atPointer = false;
};

}  // namespace vorlane::platform
