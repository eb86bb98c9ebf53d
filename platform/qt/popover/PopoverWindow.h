// The frameless window around the popover's content: where it stands, and how its user closes it.
#pragma once

#include <QPoint>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>

#include "platform/qt/controls/ScrollPane.h"
#include "platform/qt/placement/Composition.h"
#include "platform/qt/placement/SwayPlacer.h"
#include "platform/qt/popover/PopoverFrame.h"

namespace vorlane::platform {

// Where the platform lets a window grab the pointer (X) it is a popup, which an outside press
// closes; elsewhere it closes when another window becomes active, or one of ours is pressed.
class PopoverWindow : public QWidget {
    Q_OBJECT

public:
    // `byPress`: a press elsewhere may have closed it. If that was on the status item, it is about
    // to be reported as a click, too.
    using ClosedByUser = std::function<void(bool byPress)>;

    // Takes ownership of `content`. `closedByUser` is not called for `dismiss`. `composited` is
    // asked at each opening: a compositor may have come or gone.
    PopoverWindow(QWidget* content, ClosedByUser closedByUser,
                  std::function<bool()> composited = isComposited);

    // Opens beside the panel at the pointer's position, or brings the open window to the front.
    // Gives it the keyboard. Shortly after closing it opens with a short delay.
    void openAt(QPoint pointer);

    // Also cancels an opening that is still delayed.
    void dismiss();

    // Takes the size that the content now has, as far as the screen has room for it, and stays
    // beside the panel.
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
    void chooseFrame();
    void place();

    ClosedByUser closedByUser_;
    std::function<bool()> composited_;
    PopoverFrame frame;
    ScrollPane* pane;
    QTimer resting;                 // since it was closed
    std::optional<QPoint> waiting;  // where to open once `resting` has elapsed
    QTimer leaving;                 // runs while another window is active
    SwayPlacer sway;
    QPoint pointer_;
};

}  // namespace vorlane::platform
