// The frameless window around the popover's content: where it is placed and how the user closes it.
#pragma once

#include <QPoint>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "platform/qt/controls/ScrollPane.h"
#include "platform/qt/placement/Composition.h"
#include "platform/qt/placement/LayerShell.h"
#include "platform/qt/placement/SwayPlacer.h"
#include "platform/qt/popover/PopoverFrame.h"

namespace vorlane::platform {

// On X it is a popup, which grabs the pointer and closes on a press outside. On Wayland it closes
// when another window becomes active or one of ours is pressed, and as a layer surface on any press
// outside.
class PopoverWindow : public QWidget {
    Q_OBJECT

public:
    // `byPress`: a press outside may have closed it. If that press was on the tray item, a click is
    // reported soon after.
    using ClosedByUser = std::function<void(bool byPress)>;

    // Takes ownership of `content`. `closedByUser` is not called for `dismiss`. `composited` is
    // called at each opening, because a compositor may have started or ended.
    PopoverWindow(QWidget* content, ClosedByUser closedByUser,
                  std::function<bool()> composited = isComposited,
                  bool grabsPointer = canGrabPointer());

    // Opens beside the panel at the pointer's position, or raises the open window, and gives it the
    // keyboard focus. Right after it was closed, opens with a short delay.
    void openAt(QPoint pointer);

    // Hides the window and cancels a delayed opening.
    void dismiss();

    // Resizes to the content, as far as the screen allows, and stays beside the panel.
    void fit();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool isResting() const;
    void showAt(QPoint pointer);
    void chooseFrame();
    void place();

    ClosedByUser closedByUser_;
    std::function<bool()> composited_;
    bool grabsPointer_;
    PopoverFrame frame;
    ScrollPane* pane;
    QTimer resting;                     // runs for a moment after closing
    std::optional<QPoint> waiting;      // where to open once `resting` has elapsed
    QTimer leaving;                     // runs while another window is active
    std::unique_ptr<LayerShell> layer;  // null if not supported, as on X
    SwayPlacer sway;
    QPoint pointer_;
};

}  // namespace vorlane::platform
