#include "platform/qt/placement/LayerShell.h"

#include <LayerShellQt/window.h>
#include <wayland-client.h>

#include <QEnterEvent>
#include <QGuiApplication>
#include <QRasterWindow>
#include <QScreen>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <functional>
#include <utility>

#include "platform/qt/placement/LayerPlacement.h"

namespace vorlane::platform {

namespace {

using namespace std::chrono_literals;
using Layer = LayerShellQt::Window;

void noteGlobal(void* found, wl_registry* /*registry*/, std::uint32_t /*name*/,
                const char* interface, std::uint32_t /*version*/)
{
    if (std::strcmp(interface, "zwlr_layer_shell_v1") == 0) *static_cast<bool*>(found) = true;
}

void forgetGlobal(void* /*found*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}

constexpr wl_registry_listener listener{.global = noteGlobal, .global_remove = forgetGlobal};

// Uses a separate event queue, because Qt's events must not be dispatched here.
bool hasLayerShell(wl_display* display)
{
    auto* const queue = wl_display_create_queue(display);
    auto* const wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), queue);
    auto* const registry = wl_display_get_registry(wrapper);
    wl_proxy_wrapper_destroy(wrapper);
    bool found = false;
    (void)wl_registry_add_listener(registry, &listener, &found);
    (void)wl_display_roundtrip_queue(display, queue);
    wl_registry_destroy(registry);
    wl_event_queue_destroy(queue);
    return found;
}

constexpr int onePixel = Layer::AnchorTop | Layer::AnchorLeft;
constexpr int wholeScreen = onePixel | Layer::AnchorBottom | Layer::AnchorRight;
constexpr int mostTries = 10;

// Covers a screen and its panels.
class Cover : public QRasterWindow {
public:
    Cover(QScreen* screen, Layer::Anchors anchors, std::function<void(QPoint)> entered,
          std::function<void()> pressed)
        : entered_(std::move(entered)), pressed_(std::move(pressed))
    {
        auto transparent = format();
        transparent.setAlphaBufferSize(8);
        setFormat(transparent);
        setScreen(screen);
        // The size applies only between edges that are not both anchored; the position keeps Qt
        // from choosing another screen.
        setGeometry(QRect(screen->geometry().topLeft(), QSize(1, 1)));
        auto* const layer = Layer::get(this);
        layer->setAnchors(anchors);
        layer->setLayer(Layer::LayerOverlay);
        layer->setExclusiveZone(-1);
        layer->setKeyboardInteractivity(Layer::KeyboardInteractivityNone);
    }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::Enter) {
            const auto* const enter = static_cast<QEnterEvent*>(event);
            entered_(screen()->geometry().topLeft() + enter->position().toPoint());
        }
        return QRasterWindow::event(event);
    }

    void mousePressEvent(QMouseEvent* /*event*/) override { pressed_(); }

private:
    std::function<void(QPoint)> entered_;
    std::function<void()> pressed_;
};

}  // namespace

std::unique_ptr<LayerShell> LayerShell::find()
{
    const auto* const wayland = qApp->nativeInterface<QNativeInterface::QWaylandApplication>();
    if (!wayland || !hasLayerShell(wayland->display())) return nullptr;
    return std::unique_ptr<LayerShell>(new LayerShell);
}

LayerShell::LayerShell()
{
    search.setInterval(50ms);
    connect(&search, &QTimer::timeout, this, &LayerShell::searchOn);
}

void LayerShell::cover()
{
    covers.clear();
    for (auto* const screen : QGuiApplication::screens()) add(screen, wholeScreen);
    tries = 0;
    search.start();
    searchOn();
}

// sway and labwc notice which surface is under a resting pointer only when another surface is
// added, labwc only while no button is pressed. So this adds surfaces of one pixel.
void LayerShell::searchOn()
{
    if (++tries <= mostTries) return add(QGuiApplication::primaryScreen(), onePixel);
    search.stop();
    Q_EMIT located(QGuiApplication::primaryScreen()->geometry().center());
}

void LayerShell::add(QScreen* screen, int anchors)
{
    covers.push_back(std::make_unique<Cover>(
        screen, Layer::Anchors(anchors), [this](QPoint pointer) { entered(pointer); },
        [this] { Q_EMIT pressedOutside(); }));
    covers.back()->show();
}

// Deletes them later: one of them may be handling the press that led here.
void LayerShell::uncover()
{
    search.stop();
    for (auto& cover : std::exchange(covers, {})) cover.release()->deleteLater();
}

void LayerShell::place(QWidget& popover, QPoint pointer, int margin)
{
    auto* screen = QGuiApplication::screenAt(pointer);
    if (!screen) screen = QGuiApplication::primaryScreen();
    const QSize around(2 * margin, 2 * margin);
    const auto placement = LayerPlacement::at(pointer, screen->geometry(), popover.size() - around);

    (void)popover.winId();
    if (!popover.isVisible()) popover.setScreen(screen);
    auto* const layer = Layer::get(popover.windowHandle());
    layer->setLayer(Layer::LayerOverlay);
    layer->setKeyboardInteractivity(Layer::KeyboardInteractivityOnDemand);
    Layer::Anchors anchors;
    anchors.setFlag(Layer::AnchorTop, placement.edges.testFlag(Qt::TopEdge));
    anchors.setFlag(Layer::AnchorBottom, placement.edges.testFlag(Qt::BottomEdge));
    anchors.setFlag(Layer::AnchorLeft, placement.edges.testFlag(Qt::LeftEdge));
    anchors.setFlag(Layer::AnchorRight, placement.edges.testFlag(Qt::RightEdge));
    layer->setAnchors(anchors);
    layer->setMargins(placement.distances - QMargins(margin, margin, margin, margin));
}

void LayerShell::entered(QPoint pointer)
{
    if (!search.isActive()) return;
    search.stop();
    Q_EMIT located(pointer);
}

}  // namespace vorlane::platform
