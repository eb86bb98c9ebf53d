// A power-source service whose descriptions the test sets.
#pragma once

#include <utility>

#include "App/Listeners.h"
#include "App/services/PowerSources.h"

namespace vorlane {

class FakePowerSources : public PowerSources {
public:
    std::vector<PropertyDictionary> sources;
    bool watchable = true;

    std::vector<PropertyDictionary> descriptions() override { return sources; }

    Subscription observe(std::function<void()> changed) override
    {
        if (!watchable) return {};
        return listeners.add(std::move(changed));
    }

    void change() const { listeners.call(); }

private:
    Listeners listeners;
};

}  // namespace vorlane
