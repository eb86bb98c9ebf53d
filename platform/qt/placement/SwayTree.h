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
    int margin;    // of it around the visible panel
    QRect output;
    QRect workspace;  // what bars leave of the output

    // Of the window, so that the panel is beside the bar, where there is one.
    QPoint position() const;
};

struct SwayWindowName {
    qint64 process;
    QString title;
};

// Absent while sway does not show the window.
std::optional<SwayWindow> findWindow(const QJsonObject& tree, const SwayWindowName& name,
                                     int margin = 0);

}  // namespace vorlane::platform
