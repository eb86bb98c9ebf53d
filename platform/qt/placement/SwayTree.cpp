#include "platform/qt/placement/SwayTree.h"

#include <QJsonArray>

#include "platform/qt/placement/PopoverPlacement.h"

namespace vorlane::platform {

namespace {

QRect rectOf(const QJsonObject& node)
{
    const auto rect = node["rect"].toObject();
    return {rect["x"].toInt(), rect["y"].toInt(), rect["width"].toInt(), rect["height"].toInt()};
}

// `around` holds the output and the workspace that were met on the way down.
std::optional<SwayWindow> findBelow(const QJsonObject& node, const SwayWindowName& name,
                                    SwayWindow around)
{
    const auto type = node["type"].toString();
    if (type == "output") around.output = rectOf(node);
    if (type == "workspace") around.workspace = rectOf(node);
    if (node["pid"].toInteger() == name.process && node["name"].toString() == name.title) {
        around.id = node["id"].toInteger();
        around.window = rectOf(node);
        return around;
    }
    for (const auto* const children : {"floating_nodes", "nodes"}) {
        const auto below = node[QLatin1String(children)].toArray();
        for (const auto& child : below) {
            if (auto found = findBelow(child.toObject(), name, around)) return found;
        }
    }
    return std::nullopt;
}

// On the bar, since the pointer itself is not told; on the window where there is no bar.
QPoint pointerOnBar(const SwayWindow& shown)
{
    const auto middle = shown.window.center();
    if (shown.workspace.top() > shown.output.top()) return {middle.x(), shown.output.top()};
    if (shown.workspace.bottom() < shown.output.bottom()) {
        return {middle.x(), shown.output.bottom()};
    }
    if (shown.workspace.left() > shown.output.left()) return {shown.output.left(), middle.y()};
    if (shown.workspace.right() < shown.output.right()) return {shown.output.right(), middle.y()};
    return {middle.x(), shown.window.top()};
}

}  // namespace

QPoint SwayWindow::position() const
{
    const PopoverPlacement placement{
        .pointer = pointerOnBar(*this), .screen = output, .workArea = workspace};
    return placement.position(window.size());
}

std::optional<SwayWindow> findWindow(const QJsonObject& tree, const SwayWindowName& name)
{
    return findBelow(tree, name, {});
}

}  // namespace vorlane::platform
