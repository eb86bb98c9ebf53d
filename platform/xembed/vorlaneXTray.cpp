// The plugin's only exported function.
#include <type_traits>
#include <utility>

#include "platform/UiBuild.h"
#include "platform/XTrayPlugin.h"
#include "platform/xembed/XEmbedTray.h"

extern "C" __attribute__((visibility("default"))) vorlane::platform::XTray* vorlaneXTray(
    const vorlane::platform::XTrayHost& host)
{
    using namespace vorlane::platform;
    if (host.build != uiBuild) return nullptr;
    auto connection = XConnection::open();
    return connection ? new XEmbedTray(std::move(connection), host) : nullptr;
}

static_assert(std::is_same_v<decltype(vorlaneXTray), vorlane::platform::XTrayEntry>);
