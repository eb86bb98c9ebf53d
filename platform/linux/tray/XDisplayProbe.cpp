#include "platform/linux/tray/XDisplayProbe.h"

#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <utility>

namespace vorlane::platform {

namespace {

// Connects with protocol version 11 and without authorization. Any answer will do, even a refusal.
constexpr std::array<unsigned char, 12> opening{
    std::endian::native == std::endian::little ? 'l' : 'B', 0,
    std::endian::native == std::endian::little ? 11 : 0,
    std::endian::native == std::endian::little ? 0 : 11};

FileDescriptor connectTo(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) return {};
    std::memcpy(address.sun_path, path.data(), path.size());
    FileDescriptor connection(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const auto length = offsetof(sockaddr_un, sun_path) + path.size();
    if (!connection || connect(connection.get(), reinterpret_cast<const sockaddr*>(&address),
                               static_cast<socklen_t>(length)) != 0) {
        return {};
    }
    return connection;
}

}  // namespace

XDisplayProbe::XDisplayProbe(sd_event* event, const std::string& socket,
                             std::function<void(bool)> done)
    : connection(connectTo(std::string(1, '\0') + socket)), done_(std::move(done))
{
    // A server listens on the abstract name, on the file, or on both.
    if (!connection) connection = connectTo(socket);
    if (!connection) return;
    if (send(connection.get(), opening.data(), opening.size(), MSG_NOSIGNAL) !=
        static_cast<ssize_t>(opening.size())) {
        return;
    }
    source = owned<EventSourcePointer>([&](sd_event_source** handle) {
        return sd_event_add_io(event, handle, connection.get(), EPOLLIN, readable, this);
    });
}

int XDisplayProbe::readable(sd_event_source* source, int descriptor, std::uint32_t /*events*/,
                            void* self)
{
    (void)sd_event_source_set_enabled(source, SD_EVENT_OFF);
    char first = 0;
    const bool answers = recv(descriptor, &first, sizeof first, 0) == sizeof first;
    const auto done = static_cast<XDisplayProbe*>(self)->done_;  // the call may destroy this object
    done(answers);
    return 0;
}

}  // namespace vorlane::platform
