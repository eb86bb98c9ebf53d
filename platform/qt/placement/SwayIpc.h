// Sends commands and queries to sway over its socket (the i3 IPC protocol).
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <cstdint>
#include <optional>

namespace vorlane::platform {

// Opens a connection per message and waits up to 0.2 s for the answer. After a failure it sends
// nothing until `tryAgain`.
class SwayIpc {
public:
    // Absent outside of sway.
    static std::optional<SwayIpc> find();

    void run(const QByteArray& command);

    // All outputs, workspaces and windows; empty when sway does not answer.
    QJsonObject tree();

    bool answers() const { return !silent; }
    void tryAgain() { silent = false; }

private:
    explicit SwayIpc(QByteArray path);

    QByteArray ask(std::uint32_t type, const QByteArray& payload);

    QByteArray socketPath;
    bool silent = false;
};

}  // namespace vorlane::platform
