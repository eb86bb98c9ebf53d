// Finds our window in sway's tree of outputs, workspaces and windows, and computes where it goes.
// Moves nothing.
#pragma once

#include <QJsonObject>
#include <QPoint>
#include <QRect>
#include <QString>
#include <optional>

namespace vorlane::platform {

struct SwayWindow {
    qint64 id;
    QRect window;  // centred on the pointer by sway, within the output
    int margin;    // of the window around the visible panel
    QRect output;
    QRect workspace;  // the part of the output that bars leave free

    // The window position that puts the panel beside the bar, if there is one.
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
