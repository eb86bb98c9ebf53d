// The windows process. The resident program starts it and talks to it over a socket.
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QApplication>
#include <QByteArray>
#include <QIcon>
#include <QLoggingCategory>
#include <array>
#include <csignal>
#include <cstdlib>
#include <string_view>

#include "platform/UiBuild.h"
#include "platform/WindowMessages.h"
#include "platform/qt/AccessibleApplication.h"
#include "platform/qt/WindowsServer.h"

namespace vorlane::platform {
namespace {

QtMessageHandler usualHandler = nullptr;

// Qt aborts when it finds no display, which would leave a core dump.
void exitInsteadOfAborting(QtMsgType type, const QMessageLogContext& context,
                           const QString& message)
{
    usualHandler(type, context, message);
    if (type == QtFatalMsg) _exit(EXIT_FAILURE);
}

void setDefault(const char* variable, const QByteArray& value)
{
    if (qgetenv(variable).isEmpty()) qputenv(variable, value);
}

bool isOnWayland()
{
    return !qgetenv("WAYLAND_DISPLAY").isEmpty() || qEnvironmentVariableIsSet("WAYLAND_SOCKET");
}

bool hasDisplay()
{
    return isOnWayland() || !qgetenv("DISPLAY").isEmpty() || !qgetenv("QT_QPA_PLATFORM").isEmpty();
}

// Qt reads these settings when the application object is created.
void configureQt()
{
    usualHandler = qInstallMessageHandler(exitInsteadOfAborting);
    // Qt prints a warning on GNOME each time a window with the text focus closes, and on any
    // desktop when a screen reader asks for a control that is gone.
    QLoggingCategory::setFilterRules(
        "qt.qpa.wayland.textinput.warning=false\n"
        "qt.accessibility.atspi.warning=false");
    setDefault("QT_QPA_PLATFORM", isOnWayland() ? "wayland;xcb" : "xcb");
    // We draw nothing with OpenGL; its drivers would take more memory than everything else.
    setDefault("QT_XCB_GL_INTEGRATION", "none");
    // Session restore would start this executable in addition to the autostart entry.
    QCoreApplication::setAttribute(Qt::AA_DisableSessionManager);
}

QIcon applicationIcon()
{
    const QString file = QCoreApplication::applicationDirPath() +
                         "/../../share/icons/hicolor/%1x%1/apps/org.vorlane.Vorlane.png";
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) icon.addFile(file.arg(size));
    return icon;
}

bool isSocketClosed()
{
    pollfd socket{.fd = windowsSocket, .events = 0, .revents = 0};
    return poll(&socket, 1, 0) > 0;
}

int showWindows()
{
    (void)fcntl(windowsSocket, F_SETFD, FD_CLOEXEC);
    (void)prctl(PR_SET_PDEATHSIG, SIGKILL);     // a hung process would not see its socket close
    if (isSocketClosed()) return EXIT_SUCCESS;  // the resident program exited before prctl()
    if (!hasDisplay()) return EXIT_FAILURE;     // Qt would print advice to reinstall the program
    configureQt();

    std::array<char, 8> name{"vorlane"};
    std::array<char*, 2> words{name.data(), nullptr};
    int count = 1;
    const QApplication application(count, words.data());
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName("Vorlane");
    QGuiApplication::setDesktopFileName("org.vorlane.Vorlane");
    AccessibleApplication::install();
    QApplication::setWindowIcon(applicationIcon());
    WindowsServer server(windowsSocket);
    return QApplication::exec();
}

}  // namespace
}  // namespace vorlane::platform

int main(int count, char** words)
{
    using namespace vorlane::platform;
    if (count < 2 || std::string_view(words[1]) != uiBuild) return otherBuildExit;
    return showWindows();
}
