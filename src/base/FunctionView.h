#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace thermopix {

template <typename Signature>
class FunctionView;

/// A callable passed down by reference: no copy, no allocation; valid during the call that it is an argument of.
template <typename Result, typename... Arguments>
class FunctionView<Result(Arguments...)> {
public:
    template <typename Callable>
    requires(!std::is_same_v<std::remove_cvref_t<Callable>, FunctionView> &&
             std::is_invocable_r_v<Result, Callable&, Arguments...>)
        // NOLINTNEXTLINE(google-explicit-constructor,bugprone-forwarding-reference-overload): converts, by design
        FunctionView(Callable&& callable)
        : object_(const_cast<void*>(static_cast<const void*>(std::addressof(callable)))),
          call_([](void* object, Arguments... arguments) -> Result {
              return (*static_cast<std::remove_reference_t<Callable>*>(object))(std::forward<Arguments>(arguments)...);
          }) {}

    Result operator()(Arguments... arguments) const { return call_(object_, std::forward<Arguments>(arguments)...); }

private:
    void* object_;
    Result (*call_)(void*, Arguments...);
};

}  // namespace thermopix
