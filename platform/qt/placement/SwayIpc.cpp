#include "platform/qt/placement/SwayIpc.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <algorithm>
#include <cstring>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr std::uint32_t runCommand = 0;
constexpr std::uint32_t getTree = 4;
constexpr std::uint32_t longest = 16 << 20;  // bytes of an answer
constexpr int patience = 200;                // milliseconds for a message and its answer

// Messages and answers have the same header; its numbers are in native byte order.
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
        // Applies to connect() too, which blocks while the listen queue is full.
        const timeval longestWait{.tv_sec = 0, .tv_usec = 1000L * patience};
        (void)setsockopt(fd, SOL_SOCKET, SO_SNDTIMEO, &longestWait, sizeof longestWait);
        connected = connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection()
    {
        if (fd >= 0) (void)close(fd);
    }

    bool write(const QByteArray& data) const
    {
        return connected && send(fd, data.constData(), static_cast<std::size_t>(data.size()),
                                 MSG_NOSIGNAL) == data.size();
    }

    // Reads piece by piece until the deadline.
    bool read(void* data, std::size_t length) const
    {
        for (auto* at = static_cast<char*>(data); length > 0;) {
            pollfd readable{.fd = fd, .events = POLLIN, .revents = 0};
            if (poll(&readable, 1, static_cast<int>(deadline.remainingTime())) <= 0) return false;
            const auto count = recv(fd, at, length, 0);
            if (count <= 0) return false;
            at += count;
            length -= static_cast<std::size_t>(count);
        }
        return true;
    }

private:
    QDeadlineTimer deadline{patience};
    int fd;
    bool connected = false;
};

bool isAnswer(const Header& header, std::uint32_t type)
{
    return std::ranges::equal(header.magic, Header().magic) && header.type == type &&
           header.length <= longest;
}

std::optional<QByteArray> answerTo(std::uint32_t type, const QByteArray& payload,
                                   const Connection& connection)
{
    Header header{.length = static_cast<std::uint32_t>(payload.size()), .type = type};
    QByteArray message(reinterpret_cast<const char*>(&header), sizeof header);
    message += payload;
    if (!connection.write(message) || !connection.read(&header, sizeof header)) return std::nullopt;
    if (!isAnswer(header, type)) return std::nullopt;
    QByteArray answer(static_cast<qsizetype>(header.length), Qt::Uninitialized);
    if (!connection.read(answer.data(), header.length)) return std::nullopt;
    return answer;
}

}  // namespace

std::optional<SwayIpc> SwayIpc::find()
{
    auto path = qgetenv("SWAYSOCK");
    if (path.isEmpty()) return std::nullopt;
    return SwayIpc(std::move(path));
}

SwayIpc::SwayIpc(QByteArray path) : socketPath(std::move(path)) {}

void SwayIpc::run(const QByteArray& command)
{
    (void)ask(runCommand, command);
}

QJsonObject SwayIpc::tree()
{
    auto tree = QJsonDocument::fromJson(ask(getTree, {})).object();
    silent = tree.isEmpty();
    return tree;
}

QByteArray SwayIpc::ask(std::uint32_t type, const QByteArray& payload)
{
    if (silent) return {};
    const auto answer = answerTo(type, payload, Connection(socketPath));
    silent = !answer;
    return answer.value_or(QByteArray());
}

}  // namespace vorlane::platform
