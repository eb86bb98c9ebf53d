#include "platform/qt/SwayIpc.h"

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <QJsonDocument>
#include <algorithm>
#include <cstring>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr std::uint32_t runCommand = 0;
constexpr std::uint32_t getTree = 4;
constexpr std::uint32_t longest = 16 << 20;  // bytes of an answer

// Both ways alike, the numbers in the machine's own order.
struct Header {
    char magic[6] = {'i', '3', '-', 'i', 'p', 'c'};
    std::uint32_t length = 0;
    std::uint32_t type = 0;
} __attribute__((packed));

class Connection {
public:
    explicit Connection(const QByteArray& path) : fd(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        if (fd < 0 || path.size() >= static_cast<qsizetype>(sizeof address.sun_path)) return;
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
        const timeval patience{.tv_sec = 0, .tv_usec = 200'000};
        (void)setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        (void)setsockopt(fd, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
        connected = connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection()
    {
        if (fd >= 0) (void)close(fd);
    }

    bool write(const void* data, std::size_t length) const
    {
        return connected && send(fd, data, length, MSG_NOSIGNAL) == static_cast<ssize_t>(length);
    }

    bool read(void* data, std::size_t length) const
    {
        return connected && recv(fd, data, length, MSG_WAITALL) == static_cast<ssize_t>(length);
    }

private:
    int fd;
    bool connected = false;
};

}  // namespace

std::optional<SwayIpc> SwayIpc::find()
{
    auto path = qgetenv("SWAYSOCK");
    if (path.isEmpty()) return std::nullopt;
    return SwayIpc(std::move(path));
}

SwayIpc::SwayIpc(QByteArray path) : socketPath(std::move(path)) {}

void SwayIpc::run(const QByteArray& command) const
{
    (void)ask(runCommand, command);
}

QJsonObject SwayIpc::tree() const
{
    const auto answer = ask(getTree, {});
    return answer ? QJsonDocument::fromJson(*answer).object() : QJsonObject();
}

std::optional<QByteArray> SwayIpc::ask(std::uint32_t type, const QByteArray& payload) const
{
    const Connection connection(socketPath);
    Header header;
    header.length = static_cast<std::uint32_t>(payload.size());
    header.type = type;
    QByteArray message(reinterpret_cast<const char*>(&header), sizeof header);
    message += payload;
    if (!connection.write(message.constData(), static_cast<std::size_t>(message.size()))) {
        return std::nullopt;
    }
    if (!connection.read(&header, sizeof header) || header.length > longest) return std::nullopt;
    QByteArray answer(static_cast<qsizetype>(header.length), Qt::Uninitialized);
    if (!connection.read(answer.data(), header.length)) return std::nullopt;
    return answer;
}

}  // namespace vorlane::platform
