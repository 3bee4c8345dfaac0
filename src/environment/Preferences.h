#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "pixels/Appearance.h"
#include "sensing/RefreshInterval.h"
#include "sensing/SensorSource.h"
#include "sensing/TemperatureUnit.h"

namespace thermopix {

/// The whole of the user's settings. A member's initialiser is its default everywhere.
struct Preferences {
    TemperatureUnit unit = TemperatureUnit::celsius;
    PixelStyle style = PixelStyle::arcade;
    PixelSize size = PixelSize::compact;
    PixelPet pet = PixelPet::cat;
    SensorSource source = SensorSource::cpu;
    RefreshInterval refreshInterval = RefreshInterval::twoSeconds;
    bool showsUnitLetter = false;
    bool openAtLogin = false;
    bool showPreferencesOnLaunch = false;
    bool showInDock = false;
    bool checkForUpdatesAutomatically = true;

    [[nodiscard]] Appearance appearance(bool blinking = false) const {
        return {style, size, pet, showsUnitLetter, blinking};
    }

    friend bool operator==(const Preferences&, const Preferences&) = default;
};

/// The record as a JSON object (UTF-8) with all fields in declaration order, enumerations by raw value.
[[nodiscard]] std::string encodePreferences(const Preferences& preferences);

/// Reads a document field by field: a field that is missing, null, of another type or no known case takes its
/// default, unknown members are ignored. None when the document is no JSON object.
[[nodiscard]] std::optional<Preferences> decodePreferences(std::string_view document);

/// Whether the document can be read at a reasonable cost: as a file it is no deeper than `StorageLimits` says.
[[nodiscard]] bool isPreferencesDocument(std::string_view document);

}  // namespace thermopix
