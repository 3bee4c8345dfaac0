#include "platform/macos/menubar/KeyEquivalent.h"

namespace thermopix {

namespace {

constexpr std::uint64_t operator|(ModifierFlag a, ModifierFlag b) {
    return static_cast<std::uint64_t>(a) | static_cast<std::uint64_t>(b);
}

}  // namespace

std::uint64_t modifierMask(KeyModifiers modifiers) {
    switch (modifiers) {
        case KeyModifiers::command:
            return static_cast<std::uint64_t>(ModifierFlag::command);
        case KeyModifiers::commandOption:
            return ModifierFlag::command | ModifierFlag::option;
        case KeyModifiers::commandShift:
            return ModifierFlag::command | ModifierFlag::shift;
    }
    return 0;
}

}  // namespace thermopix
