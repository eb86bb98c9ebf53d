// Sends and receives messages on a SOCK_SEQPACKET socket, which delivers each message whole.
#pragma once

#include <sys/socket.h>

#include <cerrno>
#include <cstddef>
#include <string>

namespace vorlane::platform {

// Never blocks. False when the peer has gone, or its receive buffer is full.
inline bool sendFrame(int socket, const std::string& bytes)
{
    return send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT) >= 0;
}

enum class Receiving { frame, nothing, end };

// Never blocks. An empty frame, or one of more than `largest` bytes, counts as the end of the
// connection: no valid message has that size.
inline Receiving receiveFrame(int socket, std::string& bytes, std::size_t largest)
{
    constexpr int peek = MSG_PEEK | MSG_TRUNC | MSG_DONTWAIT;
    auto size = recv(socket, nullptr, 0, peek);
    // The kernel reports this error once if the peer closed without reading everything. The peer's
    // own messages are still queued.
    if (size < 0 && errno == ECONNRESET) size = recv(socket, nullptr, 0, peek);
    if (size < 0 && (errno == EAGAIN || errno == EINTR)) return Receiving::nothing;
    if (size <= 0 || static_cast<std::size_t>(size) > largest) return Receiving::end;
    bytes.resize(static_cast<std::size_t>(size));
    return recv(socket, bytes.data(), bytes.size(), MSG_DONTWAIT) == size ? Receiving::frame
                                                                          : Receiving::end;
}

}  // namespace vorlane::platform
