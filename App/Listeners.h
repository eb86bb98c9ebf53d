// A list of callbacks, called in order of registration. Each is removed when its subscription ends.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "App/Subscription.h"

namespace vorlane {

class Listeners {
public:
    [[nodiscard]] Subscription add(std::function<void()> listener)
    {
        const auto id = list->next++;
        list->callbacks.emplace(id, std::move(listener));
        return Subscription([weak = std::weak_ptr(list), id] {
            if (const auto alive = weak.lock()) alive->callbacks.erase(id);
        });
    }

    // A listener may add or end subscriptions, including its own; an ended one is not called.
    void call() const
    {
        const auto alive = list;
        std::vector<std::uint64_t> ids;
        for (const auto& [id, callback] : alive->callbacks) ids.push_back(id);
        for (const auto id : ids) {
            const auto found = alive->callbacks.find(id);
            if (found == alive->callbacks.end()) continue;
            const auto callback = found->second;
            callback();
        }
    }

private:
    struct List {
        std::map<std::uint64_t, std::function<void()>> callbacks;
        std::uint64_t next = 0;
    };

    std::shared_ptr<List> list = std::make_shared<List>();
};

}  // namespace vorlane
