// Owns a registration and ends it when destroyed.
#pragma once

#include <functional>
#include <utility>

namespace vorlane {

class [[nodiscard]] Subscription {
public:
    // Empty: owns no registration.
    Subscription() = default;

    explicit Subscription(std::function<void()> end) : end_(std::move(end)) {}

    Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}

    Subscription& operator=(Subscription&& other) noexcept
    {
        if (this == &other) return *this;
        finish();
        end_ = std::exchange(other.end_, nullptr);
        return *this;
    }

    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    ~Subscription() { finish(); }

    explicit operator bool() const { return static_cast<bool>(end_); }

    // Keeps the registration for the life of the process.
    void detach() { end_ = nullptr; }

private:
    void finish()
    {
        if (const auto end = std::exchange(end_, nullptr)) end();
    }

    std::function<void()> end_;
};

}  // namespace vorlane
