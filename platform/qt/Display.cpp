#include "platform/qt/Display.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <QCoreApplication>
#include <QDir>
#include <QPluginLoader>
#include <QStringList>
#include <QThread>
#include <QtGlobal>
#include <cstdlib>

#include "platform/qt/WaylandDisplay.h"

namespace vorlane::platform {

namespace {

// Loading it shows that its libraries are there as well.
bool hasPlugin(const QString& pattern)
{
    const auto folders = QCoreApplication::libraryPaths();
    for (const auto& folder : folders) {
        const QDir platforms(folder + "/platforms");
        const auto files = platforms.entryList({pattern}, QDir::Files);
        for (const auto& file : files) {
            if (QPluginLoader(platforms.filePath(file)).load()) return true;
        }
    }
    return false;
}

bool xAnswers()
{
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

bool isReachable(const QByteArray& name)
{
    if (name == "xcb") return xAnswers() && hasPlugin("libqxcb.so");
    if (name.startsWith("wayland")) return hasPlugin("libqwayland*.so");
    return hasPlugin("libq" + QString::fromLocal8Bit(name) + ".so");
}

QtMessageHandler usualHandler = nullptr;
void (*displayLost)() = nullptr;

// The one thing that Qt does between the loss and the end; fatal is a display that goes between our
// asking for it and Qt's.
void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    usualHandler(type, context, message);
    if (type != QtFatalMsg && !message.startsWith("The Wayland connection")) return;
    if (!qApp || QThread::currentThread() == qApp->thread()) {
        displayLost();
        _exit(EXIT_FAILURE);
    }

    // Qt's reading thread, which would end the process in the midst of what the main thread does.
    QMetaObject::invokeMethod(
        qApp,
        [] {
            displayLost();
            _exit(EXIT_FAILURE);
        },
        Qt::QueuedConnection);
    while (true) (void)pause();
}

}  // namespace

std::optional<QByteArray> reachablePlatform()
{
    const auto chosen = qgetenv("QT_QPA_PLATFORM");
    const auto candidates = (chosen.isEmpty() ? QByteArray("wayland;xcb") : chosen).split(';');
    for (const auto& candidate : candidates) {
        const auto name = candidate.split(':').first();  // parameters may follow
        const auto answer = name.startsWith("wayland") ? askWayland() : WaylandAnswer::given;
        // A compositor that hangs serves the old programs of X no sooner.
        if (answer == WaylandAnswer::late) return std::nullopt;
        if (answer == WaylandAnswer::given && isReachable(name)) return candidate;
    }
    return std::nullopt;
}

void tellOfLostDisplay(void (*lost)())
{
    displayLost = lost;
    usualHandler = qInstallMessageHandler(handleMessage);
}

}  // namespace vorlane::platform
