#include "pixels/Ink.h"

namespace thermopix {

double alpha(Ink ink) {
    switch (ink) {
        case Ink::none:
            return 0.0;
        case Ink::ghost:
            return 0.12;
        case Ink::full:
            return 1.0;
    }
    return 0.0;
}

std::optional<Ink> inkFromRawValue(std::uint8_t raw) {
    return raw <= static_cast<std::uint8_t>(Ink::full) ? std::optional(static_cast<Ink>(raw)) : std::nullopt;
}

Ink inkFromArt(char character) {
    switch (character) {
        case '#':
            return Ink::full;
        case ':':
            return Ink::ghost;
        default:
            return Ink::none;
    }
}

char artCharacter(Ink ink) {
    switch (ink) {
        case Ink::full:
            return '#';
        case Ink::ghost:
            return ':';
        case Ink::none:
            break;
    }
    return '.';
}

}  // namespace thermopix
