#include "platform/linux/application/AutostartLoginItem.h"

#include <glib.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "environment/AppInfo.h"
#include "platform/linux/files/CompanionProgram.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

namespace {

namespace fs = std::filesystem;

constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;
constexpr const char* gnomeEnabledKey = "X-GNOME-Autostart-enabled";

std::string entryName() {
    return std::string(AppInfo::identifier) + ".desktop";
}

// Null for a file that is missing or no desktop entry.
GKeyFileHandle loadEntry(const std::string& path) {
    GKeyFileHandle file(g_key_file_new());
    const bool loaded = g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr) != FALSE;
    return loaded && g_key_file_has_group(file.get(), group) != FALSE ? std::move(file) : nullptr;
}

bool names(GKeyFile* entry, const char* key, const std::vector<std::string>& desktops) {
    const GStringListHandle listed(g_key_file_get_string_list(entry, group, key, nullptr, nullptr));
    return listed && std::any_of(desktops.begin(), desktops.end(), [&](const std::string& desktop) {
               return g_strv_contains(const_cast<const char* const*>(listed.get()), desktop.c_str()) != FALSE;
           });
}

bool hasKey(GKeyFile* entry, const char* key) {
    return g_key_file_has_key(entry, group, key, nullptr) != FALSE;
}

bool isTrue(GKeyFile* entry, const char* key) {
    return g_key_file_get_boolean(entry, group, key, nullptr) != FALSE;
}

bool isProgramFound(const std::string& program) {
    const GStringHandle found(g_find_program_in_path(program.c_str()));
    return found != nullptr;
}

std::string firstWordOfCommand(GKeyFile* entry) {
    const GStringHandle command(g_key_file_get_string(entry, group, G_KEY_FILE_DESKTOP_KEY_EXEC, nullptr));
    int count = 0;
    char** words = nullptr;
    if (!command || g_shell_parse_argv(command.get(), &count, &words, nullptr) == FALSE) {
        return {};
    }
    const GStringListHandle held(words);
    std::string word = count > 0 ? words[0] : "";
    for (auto percent = word.find("%%"); percent != std::string::npos; percent = word.find("%%", percent + 1)) {
        word.erase(percent, 1);
    }
    return word;
}

// The same file, by whatever path or link it is named.
bool startsProgram(GKeyFile* entry, const std::string& program) {
    const std::string word = firstWordOfCommand(entry);
    const GStringHandle found(word.empty() ? nullptr : g_find_program_in_path(word.c_str()));
    std::error_code error;
    return word == program || (found && fs::equivalent(found.get(), program, error));
}

bool isActiveEntry(GKeyFile* entry, const AutostartLoginItem::Places& places) {
    const bool isSwitchedOff = isTrue(entry, G_KEY_FILE_DESKTOP_KEY_HIDDEN) ||
                               (hasKey(entry, gnomeEnabledKey) && !isTrue(entry, gnomeEnabledKey));
    const bool isForOthers = (hasKey(entry, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN) &&
                              !names(entry, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN, places.currentDesktops)) ||
                             names(entry, G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN, places.currentDesktops);
    const GStringHandle required(g_key_file_get_string(entry, group, G_KEY_FILE_DESKTOP_KEY_TRY_EXEC, nullptr));
    const bool isInstalled = !required || isProgramFound(required.get());
    return !isSwitchedOff && !isForOthers && isInstalled && startsProgram(entry, places.program) &&
           isProgramFound(firstWordOfCommand(entry));
}

// An argument of an Exec key: in double quotes, with the characters escaped that are special there, and once more
// for the string type of key files.
std::string quotedArgument(std::string_view argument) {
    std::string quoted = "\"";
    for (const char character : argument) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos) {
            quoted += '\\';
        }
        quoted += character;
        if (character == '%') {
            quoted += '%';
        }
    }
    return quoted + '"';
}

ServiceError errorOf(const std::string& doing, const std::string& reason) {
    return {doing + ": " + reason};
}

}  // namespace

AutostartLoginItem::Places AutostartLoginItem::placesOfThisProcess() {
    Places places;
    places.userFolder = g_get_user_config_dir();
    for (const char* const* folder = g_get_system_config_dirs(); *folder != nullptr; ++folder) {
        places.systemFolders.emplace_back(*folder);
    }
    const char* desktops = g_getenv("XDG_CURRENT_DESKTOP");
    const GStringListHandle names(g_strsplit(desktops == nullptr ? "" : desktops, ":", -1));
    places.currentDesktops.assign(names.get(), names.get() + g_strv_length(names.get()));
    places.program = runningProgram().string();
    return places;
}

bool AutostartLoginItem::isEnabled() const {
    std::error_code error;
    const bool hasUserEntry = fs::exists(fs::symlink_status(userEntry(), error));
    const auto path = hasUserEntry ? userEntry() : systemEntry().value_or("");
    const auto entry = loadEntry(path);
    return entry && isActiveEntry(entry.get(), places_);
}

std::optional<ServiceError> AutostartLoginItem::setEnabled(bool enabled) {
    if (enabled == isEnabled()) {
        return std::nullopt;
    }
    const auto entry = loadEntry(userEntry());
    if (entry && hasKey(entry.get(), G_KEY_FILE_DESKTOP_KEY_EXEC) && !startsProgram(entry.get(), places_.program)) {
        return errorOf(userEntry(), "the entry starts another program");
    }
    if (enabled) {
        return writeEntry(false);
    }
    if (systemEntry()) {
        return writeEntry(true);
    }
    std::error_code error;
    fs::remove(userEntry(), error);
    return error ? std::optional(errorOf(userEntry(), error.message())) : std::nullopt;
}

std::string AutostartLoginItem::userEntry() const {
    return places_.userFolder + "/autostart/" + entryName();
}

std::optional<std::string> AutostartLoginItem::systemEntry() const {
    for (const auto& folder : places_.systemFolders) {
        auto path = folder + "/autostart/" + entryName();
        std::error_code error;
        if (fs::exists(path, error)) {
            return path;
        }
    }
    return std::nullopt;
}

std::optional<ServiceError> AutostartLoginItem::writeEntry(bool hidden) const {
    std::error_code error;
    fs::create_directories(places_.userFolder + "/autostart", error);
    if (error) {
        return errorOf(places_.userFolder + "/autostart", error.message());
    }
    const GKeyFileHandle file(g_key_file_new());
    const std::string name(AppInfo::name);
    g_key_file_set_string(file.get(), group, G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
    g_key_file_set_string(file.get(), group, G_KEY_FILE_DESKTOP_KEY_NAME, name.c_str());
    g_key_file_set_string(file.get(), group, G_KEY_FILE_DESKTOP_KEY_EXEC, quotedArgument(places_.program).c_str());
    g_key_file_set_string(file.get(), group, G_KEY_FILE_DESKTOP_KEY_ICON, std::string(AppInfo::identifier).c_str());
    if (hidden) {
        g_key_file_set_boolean(file.get(), group, G_KEY_FILE_DESKTOP_KEY_HIDDEN, TRUE);
    }
    GErrorSlot failure;
    if (g_key_file_save_to_file(file.get(), userEntry().c_str(), failure.out()) == FALSE) {
        return errorOf(userEntry(), std::string(failure.message()));
    }
    return std::nullopt;
}

}  // namespace thermopix
