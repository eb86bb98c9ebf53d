// The commands and questions that sway takes over its socket (the i3 IPC protocol).
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <cstdint>
#include <optional>

namespace vorlane::platform {

// A connection for each message; every answer is waited for, a fifth of a second at most.
class SwayIpc {
public:
    // Absent outside of sway.
    static std::optional<SwayIpc> find();

    void run(const QByteArray& command) const;

    // All outputs, workspaces and windows; empty when sway does not answer.
    QJsonObject tree() const;

private:
    explicit SwayIpc(QByteArray path);

    std::optional<QByteArray> ask(std::uint32_t type, const QByteArray& payload) const;

    QByteArray socketPath;
};

}  // namespace vorlane::platform
