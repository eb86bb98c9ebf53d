// A program without windows.
#pragma once

#include "App/services/Windows.h"

namespace vorlane::platform {

class NoWindows : public Windows {
public:
    std::unique_ptr<Popover> makePopover(PopoverIntents /*intents*/) override
    {
        return std::make_unique<NoPopover>();
    }

    std::unique_ptr<SettingsWindow> makeSettingsWindow(SettingsWindowFrame /*frame*/,
                                                       SettingsIntents /*intents*/) override
    {
        return std::make_unique<NoSettingsWindow>();
    }

private:
    struct NoPopover : Popover {
        bool isShown() const override { return false; }
        void show(const PopoverContent& /*content*/) override {}
        void update(const PopoverContent& /*content*/) override {}
        void performClose() override {}
    };

    struct NoSettingsWindow : SettingsWindow {
        bool isShown() const override { return false; }
        void makeKeyAndOrderFront(const SettingsContent& /*content*/) override {}
        void update(const SettingsContent& /*content*/) override {}
    };
};

}  // namespace vorlane::platform
