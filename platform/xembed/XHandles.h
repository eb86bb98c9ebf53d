// Owning pointers for xcb objects.
#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace vorlane::platform {

struct Freer {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename Reply>
using ReplyPointer = std::unique_ptr<Reply, Freer>;
using XEventPointer = std::unique_ptr<xcb_generic_event_t, Freer>;

struct Disconnecter {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using XConnectionPointer = std::unique_ptr<xcb_connection_t, Disconnecter>;

}  // namespace vorlane::platform
