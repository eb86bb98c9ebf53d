// Our window in sway's tree of outputs, workspaces and windows, and where it is to go. Decides
// only.
#pragma once

#include <QJsonObject>
#include <QPoint>
#include <QRect>
#include <QString>
#include <optional>

namespace vorlane::platform {

struct SwayWindow {
    qint64 id;
    QRect window;  // sway has centred it on the pointer, as far as the output lets it
    QRect output;
    QRect workspace;  // what bars leave of the output

    // Beside the bar, where there is one.
    QPoint position() const;
};

struct SwayWindowName {
    qint64 process;
    QString title;
};

// Absent while sway does not show the window.
std::optional<SwayWindow> findWindow(const QJsonObject& tree, const SwayWindowName& name);

}  // namespace vorlane::platform
