// During its lifetime no file may grow beyond the given size, as on a full disk.
#pragma once

#include <sys/resource.h>

#include <csignal>

namespace vorlane::platform {

class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        (void)getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small{.rlim_cur = bytes, .rlim_max = before.rlim_max};
        (void)setrlimit(RLIMIT_FSIZE, &small);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk()
    {
        (void)setrlimit(RLIMIT_FSIZE, &before);
        (void)std::signal(SIGXFSZ, handler);
    }

private:
    rlimit before{};
    void (*handler)(int);
};

}  // namespace vorlane::platform
