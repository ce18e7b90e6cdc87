#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace quillbar {

/// A callback that keeps its owner alive while it runs; once the owner is gone it does nothing and
/// returns an empty result. The owner must be held by a shared pointer.
template <typename Owner, typename Action> [[nodiscard]] auto weakly(Owner& owner, Action action)
{
    return [weak = owner.weak_from_this(), action = std::move(action)](auto&&... arguments) {
        using Result = std::invoke_result_t<Action const&, Owner&, decltype(arguments)...>;
        auto const self = weak.lock();
        if (!self)
            return Result();
        return action(static_cast<Owner&>(*self), std::forward<decltype(arguments)>(arguments)...);
    };
}

} // namespace quillbar
