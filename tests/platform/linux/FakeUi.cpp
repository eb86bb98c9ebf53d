#include "FakeUi.h"

#include <poll.h>

#include <memory>
#include <utility>

#include "platform/UiBuild.h"

extern "C" __attribute__((visibility("default"))) vorlane::platform::FakeUi* fakeUi()
{
    static vorlane::platform::FakeUi state;
    return &state;
}

namespace vorlane::platform {
namespace {

class NotedPopover : public Popover {
public:
    bool isShown() const override { return shown; }
    void show(const PopoverContent& content) override
    {
        shown = true;
        fakeUi()->events.push_back("popover shown: " + content.footnote);
    }
    void update(const PopoverContent& content) override
    {
        fakeUi()->events.push_back("popover updated: " + content.footnote);
    }
    void performClose() override
    {
        shown = false;
        fakeUi()->events.emplace_back("popover closed");
    }

private:
    bool shown = false;
};

class NotedSettingsWindow : public SettingsWindow {
public:
    bool isShown() const override { return shown; }
    void makeKeyAndOrderFront(const SettingsContent& /*content*/) override
    {
        shown = true;
        fakeUi()->events.emplace_back("settings shown");
    }
    void update(const SettingsContent& /*content*/) override
    {
        fakeUi()->events.emplace_back("settings updated");
    }

private:
    bool shown = false;
};

class NotingUi : public UiPlugin {
public:
    explicit NotingUi(DrivenLoop& loop) : loop_(loop) {}

    std::unique_ptr<Popover> makePopover(PopoverIntents /*intents*/) override
    {
        return std::make_unique<NotedPopover>();
    }

    std::unique_ptr<SettingsWindow> makeSettingsWindow(SettingsWindowFrame frame,
                                                       SettingsIntents /*intents*/) override
    {
        fakeUi()->events.emplace_back(frame.title);
        return std::make_unique<NotedSettingsWindow>();
    }

    void runModal(const AlertPanelContent& content,
                  std::function<void(std::size_t)> answered) override
    {
        fakeUi()->events.push_back("asked: " + content.message);
        answered(0);
    }

    void exec() override
    {
        fakeUi()->events.emplace_back("driving");
        left = false;
        while (!left) {
            if (loop_.step() != DrivenLoop::Step::idle || left) continue;
            pollfd waiting{.fd = loop_.descriptor(), .events = POLLIN, .revents = 0};
            (void)poll(&waiting, 1, -1);
        }
    }

    void leave() override { left = true; }
    void setAppearance(const Appearance& /*appearance*/) override {}

    void popUpMenu(const std::vector<MenuItem>& items,
                   std::function<void(MenuAction)> chosen) override
    {
        fakeUi()->events.push_back("menu: " + items.front().title);
        chosen(items.front().action);
    }

private:
    DrivenLoop& loop_;
    bool left = false;
};

}  // namespace
}  // namespace vorlane::platform

extern "C" __attribute__((visibility("default"))) vorlane::platform::UiPlugin* vorlaneUi(
    const vorlane::platform::UiHost& host)
{
    using namespace vorlane::platform;
    ++fakeUi()->entries;
    if (host.build != uiBuild || !fakeUi()->displayAnswers) return nullptr;
    static std::vector<std::unique_ptr<NotingUi>> kept;
    return kept.emplace_back(std::make_unique<NotingUi>(host.loop)).get();
}
