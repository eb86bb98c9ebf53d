#include "platform/qt/popover/PopoverWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <chrono>
#include <utility>

#include "platform/qt/placement/PopoverPlacement.h"

namespace vorlane::platform {

namespace {

using namespace std::chrono_literals;

constexpr const char* title = "Vorlane";
constexpr int border = 1;
constexpr auto reopenDelay = 150ms;

Qt::WindowFlags flags(bool grabsPointer)
{
    return (grabsPointer ? Qt::Popup : Qt::Window) | Qt::FramelessWindowHint;
}

}  // namespace

PopoverWindow::PopoverWindow(QWidget* content, ClosedByUser closedByUser,
                             std::function<bool()> composited, bool grabsPointer)
    : QWidget(nullptr, flags(grabsPointer)),
      closedByUser_(std::move(closedByUser)),
      composited_(std::move(composited)),
      grabsPointer_(grabsPointer),
      pane(new ScrollPane(content)),
      layer(LayerShell::find()),
      sway(title, layer || canGrabPointer() ? std::nullopt : SwayIpc::find())
{
    setWindowTitle(title);
    qApp->installEventFilter(this);
    resting.setSingleShot(true);
    resting.setInterval(reopenDelay);
    connect(&resting, &QTimer::timeout, this, [this] {
        if (const auto pointer = std::exchange(waiting, std::nullopt)) openAt(*pointer);
    });
    // Closes only after a delay: with focus-follows-mouse, another window may get the focus while
    // the pointer moves from the bar to the popover.
    leaving.setSingleShot(true);
    leaving.setInterval(400ms);
    connect(&leaving, &QTimer::timeout, this, &QWidget::close);

    auto* const box = new QVBoxLayout(this);
    box->setSizeConstraint(QLayout::SetFixedSize);
    box->addWidget(pane);
    setAttribute(Qt::WA_TranslucentBackground);
    // These backgrounds and the ends of a scroll bar would cover the round corners.
    content->setAutoFillBackground(false);
    pane->viewport()->setAutoFillBackground(false);
    for (const auto end : {Qt::AlignTop, Qt::AlignBottom}) {
        auto* const clear = new QWidget;
        clear->setFixedHeight(PopoverFrame::radius);
        pane->addScrollBarWidget(clear, end);
    }

    // Under sway, the content is invisible until sway has placed the window.
    auto policy = pane->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    pane->setSizePolicy(policy);
    if (layer) {
        connect(layer.get(), &LayerShell::located, this, &PopoverWindow::showAt);
        connect(layer.get(), &LayerShell::pressedOutside, this, [this] {
            dismiss();
            closedByUser_(true);
        });
    }
    connect(&sway, &SwayPlacer::placed, this, [this] {
        pane->show();
        update();
    });
}

void PopoverWindow::openAt(QPoint pointer)
{
    if (isResting()) {
        waiting = pointer;
        return;
    }
    // Some Wayland compositors ignore an open window's request for focus, so it is hidden and shown
    // as a new window, which gets the focus and appears on the current workspace.
    if (!grabsPointer_ && !isActiveWindow()) hide();
    if (!isVisible() && layer) return layer->cover();
    showAt(pointer);
}

void PopoverWindow::showAt(QPoint pointer)
{
    if (!isVisible()) {
        if (layer) destroy();  // Qt would show it again as an ordinary window
        pointer_ = pointer;
        chooseFrame();
        place();
        pane->setVisible(!sway.prepare());
        show();
        sway.placeAtPointer();
    }
    raise();
    activateWindow();
}

void PopoverWindow::dismiss()
{
    waiting.reset();
    if (layer) layer->uncover();
    hide();
}

// On X, Qt notices 0.1 s late that a closed popup has lost the focus, and then closes any popup
// that was opened in the meantime.
bool PopoverWindow::isResting() const
{
    return grabsPointer_ && resting.isActive();
}

void PopoverWindow::fit()
{
    layout()->activate();
}

void PopoverWindow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || grabsPointer_) return;
    if (isActiveWindow()) {
        leaving.stop();
    } else if (isVisible()) {
        leaving.start();
    }
}

void PopoverWindow::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    closedByUser_(true);
}

void PopoverWindow::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    leaving.stop();
    if (layer) layer->uncover();
    resting.start();
}

// A popover on Wayland that never had the focus cannot close by losing it, and sees no presses but
// those on our other windows.
bool PopoverWindow::eventFilter(QObject* watched, QEvent* event)
{
    const auto type = event->type();
    if (type == QEvent::WindowActivate || type == QEvent::MouseButtonPress) {
        const auto* const widget = qobject_cast<QWidget*>(watched);
        const bool elsewhere = widget && widget->window() != this;
        if (elsewhere && isVisible() && !grabsPointer_) leaving.start();
    }
    return QWidget::eventFilter(watched, event);
}

void PopoverWindow::keyPressEvent(QKeyEvent* event)
{
    if (!event->matches(QKeySequence::Cancel)) return QWidget::keyPressEvent(event);
    hide();
    closedByUser_(false);
}

// A press on the shadow counts as outside the panel.
void PopoverWindow::mousePressEvent(QMouseEvent* event)
{
    if (frame.panel(rect()).contains(event->position().toPoint())) {
        QWidget::mousePressEvent(event);
    } else {
        close();
    }
}

void PopoverWindow::paintEvent(QPaintEvent* /*event*/)
{
    if (pane->isHidden()) return;
    QPainter painter(this);
    frame.paint(painter, rect(), palette());
}

void PopoverWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    declareShadow(*windowHandle(), frame.margin());
    if (!isVisible()) return;
    place();
    sway.placeAgain();
}

void PopoverWindow::chooseFrame()
{
    frame.setComposited(composited_());
    const int around = frame.margin() + border;
    layout()->setContentsMargins(around, around, around, around);
    sway.setMargin(frame.margin());
}

void PopoverWindow::place()
{
    const auto* screen = QGuiApplication::screenAt(pointer_);
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    const PopoverPlacement placement{
        .pointer = pointer_, .screen = screen->geometry(), .workArea = screen->availableGeometry()};
    // A Wayland compositor keeps the whole window on the screen, with its shadow.
    const int inside = border + (grabsPointer_ ? 0 : frame.margin());
    pane->setHeightLimit(placement.maximumHeight() - 2 * inside);
    layout()->activate();
    const QPoint shadow(frame.margin(), frame.margin());
    move(placement.position(frame.panel(rect()).size()) - shadow);
    if (layer) layer->place(*this, pointer_, frame.margin());
}

}  // namespace vorlane::platform
