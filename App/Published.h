// A field whose changes are announced before they are stored.
#pragma once

#include <functional>
#include <utility>

#include "App/Listeners.h"

namespace vorlane {

// Every assignment is announced, also one of an equal value: the owner compares first.
// A listener still reads the old value; one that needs the new value asks the run loop for
// its next turn.
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
