#include "platform/qt/LoopBridge.h"

#include <QAbstractEventDispatcher>

namespace vorlane::platform {

namespace {

// Of the resident loop's events in one go, so that Qt gets its turn however many there are.
constexpr int batch = 64;

}  // namespace

LoopBridge::LoopBridge(DrivenLoop& loop)
    : loop_(loop), notifier(loop.descriptor(), QSocketNotifier::Read)
{
    connect(&notifier, &QSocketNotifier::activated, this, &LoopBridge::pump);
    // The descriptor alone does not tell of timers that a Qt slot added, nor of messages that a
    // blocking call read ahead: they show at the next step, which must come before Qt sleeps.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            &LoopBridge::pump, Qt::DirectConnection);
    pump();
}

void LoopBridge::pump()
{
    for (int i = 0; i < batch; ++i) {
        const auto step = loop_.step();
        if (step == DrivenLoop::Step::dispatched) continue;
        // Inside a handler that runs a loop of Qt's the descriptor stays readable, and Qt would
        // not sleep any more.
        notifier.setEnabled(step == DrivenLoop::Step::idle);
        return;
    }
    QMetaObject::invokeMethod(this, &LoopBridge::pump, Qt::QueuedConnection);
}

}  // namespace vorlane::platform
