// A request whose reply is collected without blocking once it has arrived.
#pragma once

#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <optional>

#include "platform/xembed/XHandles.h"

namespace vorlane::platform {

template <typename Reply>
class XQuestion {
public:
    // Tracks a new request by its sequence number; discards the reply to an earlier one.
    void ask(xcb_connection_t* connection, unsigned sequence)
    {
        drop(connection);
        asked = sequence;
    }

    void drop(xcb_connection_t* connection)
    {
        if (asked) xcb_discard_reply(connection, *asked);
        asked.reset();
    }

    bool isOpen() const { return asked.has_value(); }

    // Whether the reply has arrived; `reply` stays empty if the server answered with an error.
    bool take(xcb_connection_t* connection, ReplyPointer<Reply>& reply)
    {
        if (!asked) return false;
        void* answer = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(connection, *asked, &answer, &error) == 0) return false;
        reply.reset(static_cast<Reply*>(answer));
        const ReplyPointer<xcb_generic_error_t> ignored(error);
        asked.reset();
        return true;
    }

private:
    std::optional<unsigned> asked;
};

}  // namespace vorlane::platform
