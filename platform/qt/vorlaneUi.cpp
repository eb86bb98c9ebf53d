// The one thing that the plugin exports.
#include <QCoreApplication>
#include <QtGlobal>

#include "platform/UiBuild.h"
#include "platform/UiPlugin.h"
#include "platform/qt/Display.h"
#include "platform/qt/QtUi.h"
#include "platform/qt/Room.h"

namespace {

// Qt's threads for the display's and the bus's messages, and one to spare; twice the memory of the
// first windows.
constexpr vorlane::platform::Room roomForWindows{.threads = 3, .bytes = 64 << 20};

}  // namespace

extern "C" Q_DECL_EXPORT vorlane::platform::UiPlugin* vorlaneUi(
    const vorlane::platform::UiHost& host)
{
    using namespace vorlane::platform;
    if (host.build != uiBuild) return nullptr;
    if (!hasRoom(roomForWindows)) return nullptr;
    const auto platformName = reachablePlatform();
    if (!platformName) return nullptr;

    // Nothing here is drawn by OpenGL, whose drivers would take more memory than all the rest.
    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION")) {
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    }
    // A saved session would start the program with Qt's arguments, beside its autostart file.
    QCoreApplication::setAttribute(Qt::AA_DisableSessionManager);
    tellOfLostDisplay(host.displayLost);
    static auto* const ui = new QtUi(host, *platformName);
    return ui;
}

static_assert(std::is_same_v<decltype(vorlaneUi), vorlane::platform::UiEntry>);
