// The view of the settings window on a fake laptop.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <variant>

#include "App/SettingsView.h"
#include "tests/App/AppModelFixture.h"

namespace vorlane {

class SettingsViewFixture : public AppModelFixture {
protected:
    std::shared_ptr<SettingsView> makeView()
    {
        return std::make_shared<SettingsView>(
            model, SettingsView::Dependencies{.defaults = machine.defaults,
                                              .batteryRegistry = machine.batteryRegistry,
                                              .loginItem = machine.loginItem,
                                              .soundPlayer = machine.soundPlayer,
                                              .alertPanel = machine.alertPanel,
                                              .clock = machine.clock,
                                              .calendar = machine.calendar,
                                              .texts = machine.texts});
    }

    // The only row of type `Row` with that settings key.
    template <typename Row>
    Row row(const std::string& key) const
    {
        for (const auto& section : view->content().sections) {
            for (const auto& any : section.rows) {
                const auto* const found = std::get_if<Row>(&any);
                if (found && found->key == key) return *found;
            }
        }
        ADD_FAILURE() << "no such row: " << key;
        return {};
    }

    bool enabled(const std::string& key) const
    {
        bool enabled = false;
        for (const auto& section : view->content().sections) {
            for (const auto& any : section.rows) {
                std::visit(
                    [&](const auto& row) {
                        if constexpr (requires { row.enabled; }) {
                            if (row.key == key) enabled = row.enabled;
                        }
                    },
                    any);
            }
        }
        return enabled;
    }

    DefaultsValue stored(const std::string& key) const { return machine.defaults.values.at(key); }

    std::shared_ptr<AppModel> model = makeModel();
    std::shared_ptr<SettingsView> view = makeView();
    SettingsIntents intents = view->intents();
};

}  // namespace vorlane
