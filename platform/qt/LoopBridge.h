// Lets Qt's loop drive the resident program's, for as long as this object lives.
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include "platform/UiPlugin.h"

namespace vorlane::platform {

class LoopBridge : public QObject {
    Q_OBJECT

public:
    explicit LoopBridge(DrivenLoop& loop);

private:
    void pump();

    DrivenLoop& loop_;
    QSocketNotifier notifier;
};

}  // namespace vorlane::platform
