#include "platform/qt/WaylandDisplay.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <QtGlobal>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>

namespace vorlane::platform {

namespace {

constexpr int patience = 2000;  // milliseconds

std::optional<sockaddr_un> address()
{
    const auto name = qgetenv("WAYLAND_DISPLAY");
    const auto path = name.startsWith('/') ? name : qgetenv("XDG_RUNTIME_DIR") + '/' + name;
    sockaddr_un address{};
    if (name.isEmpty() || path.size() >= static_cast<qsizetype>(sizeof address.sun_path)) {
        return std::nullopt;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    return address;
}

// wl_display.sync: a new object, of which the compositor tells as soon as it has read this.
bool sendSync(int connection)
{
    constexpr std::uint32_t display = 1;
    constexpr std::uint32_t callback = 2;
    constexpr std::uint32_t opcode = 0;
    constexpr std::uint32_t size = 12;  // bytes
    const std::array<std::uint32_t, 3> request{display, size << 16U | opcode, callback};
    return send(connection, request.data(), size, MSG_NOSIGNAL) == size;
}

WaylandAnswer answerOn(int connection)
{
    const auto compositor = address();
    if (!compositor) return WaylandAnswer::none;
    const auto* const to = reinterpret_cast<const sockaddr*>(&*compositor);
    if (connect(connection, to, sizeof *compositor) != 0) return WaylandAnswer::none;
    if (!sendSync(connection)) return WaylandAnswer::none;

    pollfd answer{.fd = connection, .events = POLLIN, .revents = 0};
    if (poll(&answer, 1, patience) == 0) return WaylandAnswer::late;
    char first = 0;
    return recv(connection, &first, 1, 0) == 1 ? WaylandAnswer::given : WaylandAnswer::none;
}

}  // namespace

WaylandAnswer askWayland()
{
    if (qEnvironmentVariableIsSet("WAYLAND_SOCKET")) {
        return WaylandAnswer::given;  // connected by who started us
    }
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (connection < 0) return WaylandAnswer::none;
    const auto answer = answerOn(connection);
    (void)close(connection);
    return answer;
}

}  // namespace vorlane::platform
