// During its lifetime the process cannot open any more files.
#pragma once

#include <sys/resource.h>

namespace vorlane::platform {

class NoMoreFiles {
public:
    NoMoreFiles()
    {
        (void)getrlimit(RLIMIT_NOFILE, &before);
        const rlimit none{.rlim_cur = 3, .rlim_max = before.rlim_max};
        (void)setrlimit(RLIMIT_NOFILE, &none);
    }

    NoMoreFiles(const NoMoreFiles&) = delete;
    NoMoreFiles& operator=(const NoMoreFiles&) = delete;
    ~NoMoreFiles() { (void)setrlimit(RLIMIT_NOFILE, &before); }

private:
    rlimit before{};
};

}  // namespace vorlane::platform
