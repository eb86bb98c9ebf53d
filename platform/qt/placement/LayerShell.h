// Places the popover beside the panel by wlr-layer-shell, which most Wayland compositors support.
#pragma once

#include <QObject>
#include <QPoint>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <memory>
#include <vector>

namespace vorlane::platform {

// While the popover is open, a transparent surface covers each screen: it finds out where the
// pointer is, and takes the presses outside of the popover.
class LayerShell : public QObject {
    Q_OBJECT

public:
    // Null where the compositor does not support wlr-layer-shell, and in builds without
    // LayerShellQt.
    static std::unique_ptr<LayerShell> find();

    // Covers the screens and looks for the pointer.
    void cover();

    void uncover();

    // Call before the popover is shown and after each resize. `margin` is the width of its shadow.
    void place(QWidget& popover, QPoint pointer, int margin);

Q_SIGNALS:
    // Emitted once after `cover`; with the middle of the primary screen if no pointer is found, as
    // after a touch.
    void located(QPoint pointer);

    void pressedOutside();

private:
    LayerShell();
    void searchOn();
    void add(QScreen* screen, int anchors);
    void entered(QPoint pointer);

    std::vector<std::unique_ptr<QWindow>> covers;
    QTimer search;  // runs until the pointer is found
    int tries = 0;
};

}  // namespace vorlane::platform
