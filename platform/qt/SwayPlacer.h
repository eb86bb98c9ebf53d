// Puts a window beside sway's bar, which no Wayland client can do for itself.
#pragma once

#include <QObject>
#include <QTimer>
#include <optional>

#include "platform/qt/SwayIpc.h"
#include "platform/qt/SwayTree.h"

namespace vorlane::platform {

// Does nothing outside of sway.
class SwayPlacer : public QObject {
    Q_OBJECT

public:
    // Windows of this title are told by it, and by being our process's.
    explicit SwayPlacer(const QString& title);

    // Before the window is shown: has sway float it, unseen until it is placed.
    void prepare();

    // As soon as sway shows the window: moves it to the pointer and beside the bar, and lets it
    // be seen.
    void placeAtPointer();

    // After a change of its size: beside the bar, where it is.
    void placeAgain();

private:
    void tryPlacing();
    std::optional<SwayWindow> find() const { return findWindow(sway->tree(), name); }

    std::optional<SwayIpc> sway;
    SwayWindowName name;
    QTimer retry;
    int triesLeft = 0;
    bool prepared = false;
    bool atPointer = false;
};

}  // namespace vorlane::platform
