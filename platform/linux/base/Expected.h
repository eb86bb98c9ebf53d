// A value or an error, like C++23's std::expected.
#pragma once

#include <cerrno>
#include <system_error>
#include <utility>
#include <variant>

namespace vorlane::platform {

// Check before use: `*` and `->` require a value, `error` requires an error.
template <typename Value = std::monostate>
class [[nodiscard]] Expected {
public:
    Expected(Value value = {}) : outcome(std::move(value)) {}
    Expected(std::errc error) : outcome(error) {}

    explicit operator bool() const { return std::holds_alternative<Value>(outcome); }
    Value& operator*() { return *std::get_if<Value>(&outcome); }
    const Value& operator*() const { return *std::get_if<Value>(&outcome); }
    Value* operator->() { return std::get_if<Value>(&outcome); }
    const Value* operator->() const { return std::get_if<Value>(&outcome); }
    Value value_or(Value other) && { return *this ? std::move(**this) : std::move(other); }
    std::errc error() const { return *std::get_if<std::errc>(&outcome); }

private:
    std::variant<Value, std::errc> outcome;
};

// The error of the system call that has just failed.
inline std::errc lastError()
{
    return static_cast<std::errc>(errno);
}

}  // namespace vorlane::platform
