// A screen without pixels: holds the content of the windows, and plays the user who acts on them.
#pragma once

#include <optional>
#include <utility>

#include "App/services/Windows.h"

namespace vorlane {

class FakeWindows : public Windows {
public:
    struct PopoverState {
        PopoverIntents intents;
        std::optional<PopoverContent> shown;  // while it is open
        bool pressedOutside = false;          // a press closed the popover and is still held
        int openings = 0;
        int raisings = 0;  // shown while already open
        int updates = 0;
    };

    struct SettingsState {
        SettingsWindowFrame frame{};
        SettingsIntents intents;
        std::optional<SettingsContent> shown;  // while it is open
        int openings = 0;
        int updates = 0;
    };

    PopoverState popover;
    SettingsState settings;
    int popoversMade = 0;
    int settingsWindowsMade = 0;

    // Oldest first: "popover shown", "popover raised", "popover closed", "settings shown".
    std::vector<std::string> events;

    std::unique_ptr<Popover> makePopover(PopoverIntents intents) override
    {
        ++popoversMade;
        popover.intents = std::move(intents);
        return std::make_unique<FakePopover>(*this);
    }

    std::unique_ptr<SettingsWindow> makeSettingsWindow(SettingsWindowFrame frame,
                                                       SettingsIntents intents) override
    {
        ++settingsWindowsMade;
        settings.frame = frame;
        settings.intents = std::move(intents);
        return std::make_unique<FakeSettingsWindow>(*this);
    }

    // The user closes a window.
    void closePopover() { popover.shown.reset(); }
    void closeSettings() { settings.shown.reset(); }

    // The user presses the mouse beside the popover, perhaps on the status item.
    void pressOutsidePopover()
    {
        popover.shown.reset();
        popover.pressedOutside = true;
    }

    void release() { popover.pressedOutside = false; }

private:
    class FakePopover : public Popover {
    public:
        explicit FakePopover(FakeWindows& screen) : screen_(screen) {}

        bool isShown() const override
        {
            return screen_.popover.shown.has_value() || screen_.popover.pressedOutside;
        }

        void show(const PopoverContent& content) override
        {
            const bool wasOpen = screen_.popover.shown.has_value();
            screen_.popover.shown = content;
            ++(wasOpen ? screen_.popover.raisings : screen_.popover.openings);
            screen_.events.emplace_back(wasOpen ? "popover raised" : "popover shown");
        }

        void update(const PopoverContent& content) override
        {
            if (!screen_.popover.shown) return;
            screen_.popover.shown = content;
            ++screen_.popover.updates;
        }

        void performClose() override
        {
            if (!screen_.popover.shown) return;
            screen_.popover.shown.reset();
            screen_.events.emplace_back("popover closed");
        }

    private:
        FakeWindows& screen_;
    };

    class FakeSettingsWindow : public SettingsWindow {
    public:
        explicit FakeSettingsWindow(FakeWindows& screen) : screen_(screen) {}

        bool isShown() const override { return screen_.settings.shown.has_value(); }

        void makeKeyAndOrderFront(const SettingsContent& content) override
        {
            screen_.settings.shown = content;
            ++screen_.settings.openings;
            screen_.events.emplace_back("settings shown");
        }

        void update(const SettingsContent& content) override
        {
            screen_.settings.shown = content;
            ++screen_.settings.updates;
        }

    private:
        FakeWindows& screen_;
    };
};

}  // namespace vorlane
