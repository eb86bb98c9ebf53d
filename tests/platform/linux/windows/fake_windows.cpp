// Stands in for the windows process: hands its socket to the test, which then plays its part, and
// exits when the test asks it to.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <string>

namespace {

constexpr int given = 3;

int connectTo(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) return -1;
    std::memcpy(address.sun_path, path.data(), path.size());
    const int connection = socket(AF_UNIX, SOCK_SEQPACKET, 0);
    const auto* const to = reinterpret_cast<const sockaddr*>(&address);
    return connect(connection, to, sizeof address) == 0 ? connection : -1;
}

bool handOver(int connection, int file)
{
    char byte = 0;
    iovec content{.iov_base = &byte, .iov_len = 1};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof file)]{};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    auto* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof file);
    std::memcpy(CMSG_DATA(header), &file, sizeof file);
    return sendmsg(connection, &message, 0) == 1;
}

}  // namespace

int main(int /*count*/, char** words)
{
    const int connection = connectTo(words[0] + std::string(".socket"));
    if (connection < 0 || !handOver(connection, given)) return 1;
    (void)close(given);
    unsigned char code = 0;
    const bool isGiven = recv(connection, &code, 1, 0) == 1;
    _exit(isGiven ? code : 0);  // skips the leak check, which would delay the exit
}
