#include "platform/linux/UiLoader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "platform/UiBuild.h"
#include "platform/linux/ExitHook.h"
#include "platform/linux/LocalXDisplay.h"
#include "platform/linux/PluginFile.h"
#include "platform/linux/XDisplayProbe.h"

namespace vorlane::platform {

namespace {

class LatePopover : public Popover {
public:
    LatePopover(UiLoader& loader, PopoverIntents intents)
        : loader_(loader), intents_(std::move(intents))
    {}

    bool isShown() const override { return window && window->isShown(); }

    void show(const PopoverContent& content) override
    {
        if (auto* const ui = window ? nullptr : loader_.plugin()) {
            window = ui->makePopover(std::move(intents_));
        }
        if (window) window->show(content);
    }

    void update(const PopoverContent& content) override
    {
        if (window) window->update(content);
    }

    void performClose() override
    {
        if (window) window->performClose();
    }

private:
    UiLoader& loader_;
    PopoverIntents intents_;
    std::unique_ptr<Popover> window;
};

class LateSettingsWindow : public SettingsWindow {
public:
    LateSettingsWindow(UiLoader& loader, SettingsWindowFrame frame, SettingsIntents intents)
        : loader_(loader), frame_(frame), intents_(std::move(intents))
    {}

    bool isShown() const override { return window && window->isShown(); }

    void makeKeyAndOrderFront(const SettingsContent& content) override
    {
        if (auto* const ui = window ? nullptr : loader_.plugin()) {
            window = ui->makeSettingsWindow(frame_, std::move(intents_));
        }
        if (window) window->makeKeyAndOrderFront(content);
    }

    void update(const SettingsContent& content) override
    {
        if (window) window->update(content);
    }

private:
    UiLoader& loader_;
    SettingsWindowFrame frame_;
    SettingsIntents intents_;
    std::unique_ptr<SettingsWindow> window;
};

std::size_t cancelButton(const AlertPanelContent& content)
{
    const auto cancel = std::ranges::find(content.buttons, ButtonRole::cancel, &AlertButton::role);
    const auto index = static_cast<std::size_t>(cancel - content.buttons.begin());
    return index < content.buttons.size() ? index : content.buttons.size() - 1;
}

}  // namespace

UiLoader::UiLoader(SdEventRunLoop& loop, Origin origin)
    : loop_(loop), driven(loop.event()), origin_(std::move(origin))
{}

std::unique_ptr<Popover> UiLoader::makePopover(PopoverIntents intents)
{
    return std::make_unique<LatePopover>(*this, std::move(intents));
}

std::unique_ptr<SettingsWindow> UiLoader::makeSettingsWindow(SettingsWindowFrame frame,
                                                             SettingsIntents intents)
{
    return std::make_unique<LateSettingsWindow>(*this, frame, std::move(intents));
}

void UiLoader::runModal(const AlertPanelContent& content,
                        std::function<void(std::size_t button)> answered)
{
    if (auto* const ui = plugin()) return ui->runModal(content, std::move(answered));
    if (content.buttons.empty()) return;
    loop_.async(
        [button = cancelButton(content), answered = std::move(answered)] { answered(button); });
}

void UiLoader::popUpMenu(const std::vector<MenuItem>& items, std::function<void(MenuAction)> chosen)
{
    if (auto* const ui = plugin()) ui->popUpMenu(items, std::move(chosen));
}

// The X libraries wait for the display without end. One that is not there at all is the plugin's to
// find out.
bool UiLoader::displayHangs() const
{
    const auto socket = LocalXDisplay::ofSession().socket();
    const auto event = owned<EventPointer>(sd_event_new);
    if (!socket || !event) return false;

    bool said = false;
    const XDisplayProbe probe(event.get(), *socket, [&](bool /*answers*/) { said = true; });
    if (!probe.isAsking()) return false;
    (void)sd_event_run(event.get(), static_cast<std::uint64_t>(origin_.patience.count() * 1e6));
    return !said;
}

UiPlugin* UiLoader::plugin()
{
    if (loaded) return loaded;
    if (!entry) entry = reinterpret_cast<UiEntry*>(openPlugin(origin_.plugin, uiEntryName));
    if (!entry) {
        origin_.refused();
        return nullptr;
    }

    if (displayHangs()) return nullptr;
    loaded = entry({.build = uiBuild, .loop = driven, .displayLost = ExitHook::runNow});
    if (!loaded) return nullptr;
    loop_.handOver(
        {.drive = [ui = loaded] { ui->exec(); }, .leave = [ui = loaded] { ui->leave(); }});
    if (origin_.session) {
        appearance.emplace(origin_.session,
                           [ui = loaded](const Appearance& next) { ui->setAppearance(next); });
    }
    return loaded;
}

}  // namespace vorlane::platform
