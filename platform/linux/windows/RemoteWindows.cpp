#include "platform/linux/windows/RemoteWindows.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <variant>

#include "platform/Overloaded.h"

namespace vorlane::platform {

namespace {

using Clock = std::chrono::steady_clock;

// The press that closed the popover may also be reported as a click on the tray item.
constexpr std::chrono::milliseconds justClosed{150};

// The retry gets more time: enough to load the program's files even on a slow machine.
constexpr double retryFactor = 5;

std::size_t cancelButton(const AlertPanelContent& content)
{
    const auto cancel = std::ranges::find(content.buttons, ButtonRole::cancel, &AlertButton::role);
    const auto index = static_cast<std::size_t>(cancel - content.buttons.begin());
    return index < content.buttons.size() ? index : content.buttons.size() - 1;
}

}  // namespace

class RemoteWindows::RemotePopover : public Popover {
public:
    explicit RemotePopover(RemoteWindows& windows) : windows_(windows) {}

    bool isShown() const override
    {
        const auto& state = windows_.popover;
        return state.shown || Clock::now() - state.closedByPress < justClosed;
    }

    void show(const PopoverContent& content) override
    {
        windows_.popover.content = content;
        windows_.request([this] { windows_.showPopover(); });
    }

    void update(const PopoverContent& content) override
    {
        windows_.popover.content = content;
        windows_.process.update(UpdatePopover{content});
    }

    void performClose() override
    {
        if (!windows_.popover.shown) return;
        windows_.popover.shown = false;
        windows_.takeToken();
        windows_.request([this] { windows_.process.send(ClosePopover{.token = windows_.token}); });
    }

private:
    RemoteWindows& windows_;
};

class RemoteWindows::RemoteSettingsWindow : public SettingsWindow {
public:
    explicit RemoteSettingsWindow(RemoteWindows& windows) : windows_(windows) {}

    bool isShown() const override { return windows_.settings.shown; }

    void makeKeyAndOrderFront(const SettingsContent& content) override
    {
        windows_.settings.content = content;
        windows_.request([this] { windows_.showSettings(); });
    }

    void update(const SettingsContent& content) override
    {
        windows_.settings.content = content;
        windows_.process.update(UpdateSettings{content});
    }

private:
    RemoteWindows& windows_;
};

RemoteWindows::RemoteWindows(SdEventRunLoop& loop, Dependencies dependencies)
    : loop_(loop),
      dependencies_(std::move(dependencies)),
      process(loop, {.program = dependencies_.program,
                     .received = [this](const FromWindows& message) { handle(message); },
                     .answered = [this] { answered(); },
                     .ended = [this](WindowsProcess::End how) { ended(how); },
                     .isOfOtherBuild = [this] { dependencies_.refused(); }})
{}

std::unique_ptr<Popover> RemoteWindows::makePopover(PopoverIntents intents)
{
    popover.intents = std::move(intents);
    return std::make_unique<RemotePopover>(*this);
}

std::unique_ptr<SettingsWindow> RemoteWindows::makeSettingsWindow(SettingsWindowFrame frame,
                                                                  SettingsIntents intents)
{
    settings.intents = std::move(intents);
    settings.frame = frame;
    return std::make_unique<RemoteSettingsWindow>(*this);
}

void RemoteWindows::runModal(const AlertPanelContent& content,
                             std::function<void(std::size_t button)> answered)
{
    if (content.buttons.empty()) return;
    const auto cancel = cancelButton(content);
    if (!start()) {
        loop_.async([cancel, answered = std::move(answered)] { answered(cancel); });
        return;
    }
    const auto id = nextQuestion++;
    questions.emplace(id, Question{.answered = std::move(answered), .cancel = cancel});
    process.send(Ask{.id = id, .content = content});
    process.expectAnswer(dependencies_.patience);
}

void RemoteWindows::popUpMenu(const std::vector<MenuItem>& items,
                              std::function<void(MenuAction)> chosen)
{
    menuChosen = std::move(chosen);
    request([this, items] {
        if (start()) process.send(PopUpMenu{items});
    });
}

void RemoteWindows::request(const std::function<void()>& send)
{
    isRetrying = false;
    send();
    process.expectAnswer(dependencies_.patience);
}

void RemoteWindows::showPopover()
{
    const bool started = start();
    takeToken();
    process.send(
        ShowPopover{.content = popover.content, .token = token, .opening = ++popover.opening});
    popover.shown = started;
}

void RemoteWindows::showSettings()
{
    const bool started = start();
    takeToken();
    process.send(ShowSettings{.title = settings.frame.title,
                              .width = settings.frame.width,
                              .height = settings.frame.height,
                              .content = settings.content,
                              .token = token,
                              .opening = ++settings.opening});
    settings.shown = started;
}

// Call after starting the process, which inherits both variables. A running one needs the startup
// id only on X11, where there is no other token.
void RemoteWindows::takeToken()
{
    for (const char* const variable : {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"}) {
        if (const char* const given = std::getenv(variable)) token = given;
        (void)unsetenv(variable);
    }
}

void RemoteWindows::answered()
{
    token.clear();
    isRetrying = false;
}

bool RemoteWindows::start()
{
    if (process.isRunning()) return true;
    if (!process.start()) return false;
    process.send(appearance);
    if (!dependencies_.session) return true;
    const auto changed = [this](const Appearance& next) {
        appearance = next;
        process.update(appearance);
    };
    portal.emplace(dependencies_.session, changed, appearance);
    return true;
}

// When the process hung, a new process shows its windows again, once.
void RemoteWindows::ended(WindowsProcess::End how)
{
    const bool retries = how == WindowsProcess::End::hung && !isRetrying;
    const bool showsPopover = retries && popover.shown;
    const bool showsSettings = retries && settings.shown;
    forgetWindows();
    isRetrying = retries;
    if (showsSettings) showSettings();
    if (showsPopover) showPopover();
    process.expectAnswer(retryFactor * dependencies_.patience);
}

void RemoteWindows::forgetWindows()
{
    portal.reset();
    popover.shown = false;
    settings.shown = false;
    for (const auto& [id, question] : std::exchange(questions, {})) {
        loop_.async([pending = question] { pending.answered(pending.cancel); });
    }
    (void)malloc_trim(0);  // the windows' contents were its largest allocations
}

void RemoteWindows::handle(const FromWindows& message)
{
    std::visit(
        Overloaded{[this](const PopoverClosed& report) { popoverClosed(report); },
                   [this](const SettingsClosed& report) {
                       if (report.opening == settings.opening) settings.shown = false;
                   },
                   [this](const OpenSettings&) { popover.intents.openSettings(); },
                   [this](const Quit&) { popover.intents.quit(); },
                   [this](const CancelSnooze&) { popover.intents.cancelSnooze(); },
                   [this](const SelectRange& report) { popover.intents.selectRange(report.range); },
                   [this](const SetSetting& report) { set(report); },
                   [this](const SetLaunchAtLogin& report) {
                       settings.intents.setLaunchAtLogin(report.on);
                   },
                   [this](const ResetHistory&) { settings.intents.resetHistory(); },
                   [this](const Answered& report) {
                       if (const auto asked = questions.extract(report.id)) {
                           asked.mapped().answered(static_cast<std::size_t>(report.button));
                       }
                   },
                   [this](const Chosen& report) { menuChosen(report.action); },
                   [this](const Idle&) { endIfIdle(); }, [](const Handled&) {}},
        message);
}

void RemoteWindows::set(const SetSetting& message)
{
    const auto& key = message.key;
    const auto& intents = settings.intents;
    std::visit(Overloaded{[&](bool on) { intents.setToggle(key, on); },
                          [&](std::int64_t number) { intents.setNumber(key, number); },
                          [&](TimeOfDay time) { intents.setTime(key, time); },
                          [&](const std::string& sound) { intents.chooseSound(key, sound); }},
               message.value);
}

void RemoteWindows::popoverClosed(const PopoverClosed& message)
{
    if (message.opening != popover.opening || !popover.shown) return;
    popover.shown = false;
    if (message.byPress) popover.closedByPress = Clock::now();
}

// Keeps the process while a message is in flight, which may open a window.
void RemoteWindows::endIfIdle()
{
    if (popover.shown || settings.shown || !questions.empty() || !process.hasAnswered()) return;
    process.dismiss();
    forgetWindows();
}

}  // namespace vorlane::platform
