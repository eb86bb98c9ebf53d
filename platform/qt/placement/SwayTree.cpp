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

// `around` collects the output and the workspace on the way down.
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

// Guesses where the pointer was along one axis: in the middle of the window, which sway centred on
// it. If the window touches the output's edge, at that edge, so that the panel goes there too and
// the window's margin beyond it.
int pointerAlong(int first, int last, int outputFirst, int outputLast)
{
    if (first <= outputFirst) return outputFirst;
    if (last >= outputLast) return outputLast;
    return (first + last) / 2;
}

// sway does not report the pointer's position.
QPoint pointerNear(const SwayWindow& shown)
{
    const QPoint middle(pointerAlong(shown.window.left(), shown.window.right(), shown.output.left(),
                                     shown.output.right()),
                        pointerAlong(shown.window.top(), shown.window.bottom(), shown.output.top(),
                                     shown.output.bottom()));
    if (shown.workspace != shown.output) return middle;
    return {middle.x(), shown.window.top() + shown.margin};
}

}  // namespace

QPoint SwayWindow::position() const
{
    const PopoverPlacement placement{
        .pointer = pointerNear(*this), .screen = output, .workArea = workspace};
    const QPoint shadow(margin, margin);
    const QSize panel = window.size() - 2 * QSize(margin, margin);
    return placement.position(panel) - shadow;
}

std::optional<SwayWindow> findWindow(const QJsonObject& tree, const SwayWindowName& name,
                                     int margin)
{
    return findBelow(tree, name,
                     {.id = 0, .window = {}, .margin = margin, .output = {}, .workspace = {}});
}

}  // namespace vorlane::platform
