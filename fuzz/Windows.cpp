// Messages between the resident program and the windows process, valid or not: bytes that decode as
// a message are exactly those it encodes to.
#include <string>
#include <variant>

#include "fuzz/Require.h"
#include "fuzz/Targets.h"
#include "platform/WindowMessages.h"

namespace vorlane::fuzz {

namespace {

template <typename Message>
std::string written(const Message& message)
{
    return std::visit([](const auto& one) { return platform::wire::encodeAs<Message>(one); },
                      message);
}

template <typename Message>
void check(const std::string& bytes)
{
    const auto message = platform::wire::decode<Message>(bytes);
    if (!message) return;
    require(written(*message) == bytes, "a message encodes to the bytes it was decoded from");
}

}  // namespace

void windows(Input input)
{
    const bool toWindows = input.flag();
    const auto bytes = input.rest();
    if (toWindows) return check<platform::ToWindows>(bytes);
    check<platform::FromWindows>(bytes);
}

}  // namespace vorlane::fuzz
