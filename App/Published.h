// A field that notifies its subscribers of each assignment, before the value is stored.
#pragma once

#include <functional>
#include <utility>

#include "App/Listeners.h"

namespace vorlane {

// Assigning an equal value notifies too, so the owner compares first. A subscriber still reads the
// old value; to read the new one, it defers its work to the next turn of the run loop.
template <typename T>
class Published {
public:
    explicit Published(T initial = {}) : value(std::move(initial)) {}

    const T& get() const { return value; }

    void set(T next)
    {
        listeners.call();
        value = std::move(next);
    }

    [[nodiscard]] Subscription subscribe(std::function<void()> willChange)
    {
        return listeners.add(std::move(willChange));
    }

private:
    T value;
    Listeners listeners;
};

}  // namespace vorlane
