#pragma once

#include <string_view>

/// The names of the Settings controls but the switches, for assistive technology, events and interface tests. Those
/// that end in a dot are followed by a raw value.
namespace thermopix::Identifiers {

inline constexpr std::string_view window = "prefs.window";
inline constexpr std::string_view pane = "prefs.pane.";
inline constexpr std::string_view preview = "prefs.preview";
inline constexpr std::string_view pet = "prefs.pet.";
inline constexpr std::string_view style = "prefs.style.";
inline constexpr std::string_view size = "prefs.size";
inline constexpr std::string_view unit = "prefs.unit";
inline constexpr std::string_view source = "prefs.source";
inline constexpr std::string_view interval = "prefs.interval";
inline constexpr std::string_view checkNow = "prefs.checkNow";
inline constexpr std::string_view quit = "prefs.quit";

}  // namespace thermopix::Identifiers
