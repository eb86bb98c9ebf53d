// Whether the process has room for what windows need, asked before Qt takes it: Qt waits for ever
// for a thread that could not be started.
#pragma once

#include <cstddef>

namespace vorlane::platform {

struct Room {
    std::size_t threads;
    std::size_t bytes;  // of address space
};

// Takes it all and gives it back.
bool hasRoom(const Room& wanted);

}  // namespace vorlane::platform
