// Combines several function objects into one, to visit a variant.
#pragma once

namespace vorlane::platform {

template <typename... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};
template <typename... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

}  // namespace vorlane::platform
