// A private Xvfb, which ends with the test.
#pragma once

#include <sys/types.h>

#include <string>

namespace vorlane::platform {

class XServer {
public:
    // Sets $DISPLAY. Fails the test if the server does not start.
    XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;
    ~XServer();

    // Suspends the server until `resume`.
    void stop() const;
    void resume() const;

    // Kills the server, as in a crash.
    void end();

private:
    void start();

    pid_t process = 0;
};

}  // namespace vorlane::platform
