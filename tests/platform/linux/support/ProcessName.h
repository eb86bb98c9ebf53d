// Changes the test process's name, as the kernel reports it, for the lifetime of the object.
#pragma once

#include <sys/prctl.h>

#include <array>

namespace vorlane::platform {

class ProcessName {
public:
    explicit ProcessName(const char* name)
    {
        (void)prctl(PR_GET_NAME, before.data());
        set(name);
    }
    ProcessName(const ProcessName&) = delete;
    ProcessName& operator=(const ProcessName&) = delete;
    ~ProcessName() { set(before.data()); }

    void set(const char* name) { (void)prctl(PR_SET_NAME, name); }

private:
    std::array<char, 16> before{};
};

}  // namespace vorlane::platform
