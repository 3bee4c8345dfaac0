#include "platform/linux/application/AutostartLoginItem.h"

#include <glib.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "environment/AppInfo.h"
#include "environment/Notices.h"
#include "platform/linux/files/CompanionProgram.h"
#include "platform/linux/files/SettingsFile.h"

namespace thermopix {

namespace {

namespace fs = std::filesystem;

constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;
constexpr const char* execKey = G_KEY_FILE_DESKTOP_KEY_EXEC;
constexpr const char* hiddenKey = G_KEY_FILE_DESKTOP_KEY_HIDDEN;
constexpr const char* tryExecKey = G_KEY_FILE_DESKTOP_KEY_TRY_EXEC;
constexpr const char* onlyShowInKey = G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN;
constexpr const char* notShowInKey = G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN;
constexpr const char* gnomeEnabledKey = "X-GNOME-Autostart-enabled";

std::string entryName() {
    return std::string(AppInfo::identifier) + ".desktop";
}

GKeyFileHandle parsedEntry(std::string_view text) {
    GKeyFileHandle entry(g_key_file_new());
    constexpr auto everything = static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    const bool isRead = g_key_file_load_from_data(entry.get(), text.data(), text.size(), everything, nullptr) != FALSE;
    return isRead && g_key_file_has_group(entry.get(), group) != FALSE ? std::move(entry) : nullptr;
}

// Null for a file that is missing or no desktop entry.
GKeyFileHandle loadEntry(const std::string& path) {
    const auto text = readSettingsFile(path).bytes;
    return text ? parsedEntry(*text) : nullptr;
}

std::string dataOf(GKeyFile* entry) {
    const GStringHandle text(g_key_file_to_data(entry, nullptr, nullptr));
    return text.get();
}

std::vector<std::string> listOf(GKeyFile* entry, const char* key) {
    const GStringListHandle listed(g_key_file_get_string_list(entry, group, key, nullptr, nullptr));
    return listed ? std::vector<std::string>(listed.get(), listed.get() + g_strv_length(listed.get()))
                  : std::vector<std::string>();
}

void setList(GKeyFile* entry, const char* key, const std::vector<std::string>& texts) {
    if (texts.empty()) {
        g_key_file_remove_key(entry, group, key, nullptr);
        return;
    }
    std::vector<const char*> list(texts.size());
    std::transform(texts.begin(), texts.end(), list.begin(), [](const std::string& text) { return text.c_str(); });
    g_key_file_set_string_list(entry, group, key, list.data(), list.size());
}

bool hasAny(const std::vector<std::string>& names, const std::vector<std::string>& wanted) {
    return std::find_first_of(names.begin(), names.end(), wanted.begin(), wanted.end()) != names.end();
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

std::string commandOf(GKeyFile* entry) {
    const GStringHandle command(g_key_file_get_string(entry, group, execKey, nullptr));
    return command ? command.get() : "";
}

std::string programOf(GKeyFile* entry) {
    int count = 0;
    char** words = nullptr;
    if (g_shell_parse_argv(commandOf(entry).c_str(), &count, &words, nullptr) == FALSE) {
        return {};
    }
    const GStringListHandle held(words);
    std::string word = count > 0 ? words[0] : "";
    for (auto percent = word.find("%%"); percent != std::string::npos; percent = word.find("%%", percent + 1)) {
        word.erase(percent, 1);
    }
    return word;
}

// What follows the program in a command, quoted as it is there.
std::string argumentsOf(const std::string& command) {
    std::size_t end = command.find_first_not_of(' ');
    char quote = '\0';
    for (; end < command.size() && (quote != '\0' || command[end] != ' '); ++end) {
        const char character = command[end];
        if (character == '\\' && quote != '\'') {
            ++end;
        } else if (quote != '\0') {
            quote = character == quote ? '\0' : quote;
        } else if (character == '"' || character == '\'') {
            quote = character;
        }
    }
    return end < command.size() ? command.substr(end) : std::string();
}

// The same file, by whatever path or link it is named.
bool startsProgram(GKeyFile* entry, const std::string& program) {
    const std::string word = programOf(entry);
    const GStringHandle found(word.empty() ? nullptr : g_find_program_in_path(word.c_str()));
    std::error_code error;
    return word == program || (found && fs::equivalent(found.get(), program, error));
}

// This program, wherever it was when the entry was written.
bool startsUs(GKeyFile* entry, const std::string& program) {
    return startsProgram(entry, program) || fs::path(programOf(entry)).filename() == fs::path(program).filename();
}

bool isOurs(GKeyFile* entry, const std::string& program) {
    const std::string word = programOf(entry);
    return word.empty() || !isProgramFound(word) || startsUs(entry, program);
}

bool isForThisDesktop(GKeyFile* entry, const std::vector<std::string>& desktops) {
    return (!hasKey(entry, onlyShowInKey) || hasAny(listOf(entry, onlyShowInKey), desktops)) &&
           !hasAny(listOf(entry, notShowInKey), desktops);
}

bool isActiveEntry(GKeyFile* entry, const AutostartLoginItem::Places& places) {
    const bool isSwitchedOff =
        isTrue(entry, hiddenKey) || (hasKey(entry, gnomeEnabledKey) && !isTrue(entry, gnomeEnabledKey));
    const GStringHandle required(g_key_file_get_string(entry, group, tryExecKey, nullptr));
    const bool isInstalled = !required || isProgramFound(required.get());
    return !isSwitchedOff && isForThisDesktop(entry, places.currentDesktops) && isInstalled &&
           startsUs(entry, places.program) && isProgramFound(programOf(entry));
}

// An argument of an Exec key: in double quotes, with the characters escaped that are special there.
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

// Changes what keeps the session from starting the program by this entry, and nothing else.
void activate(GKeyFile* entry, const AutostartLoginItem::Places& places) {
    if (!startsProgram(entry, places.program)) {
        const std::string command = quotedArgument(places.program) + argumentsOf(commandOf(entry));
        g_key_file_set_string(entry, group, execKey, command.c_str());
    }
    const GStringHandle required(g_key_file_get_string(entry, group, tryExecKey, nullptr));
    if (required && !isProgramFound(required.get())) {
        g_key_file_set_string(entry, group, tryExecKey, places.program.c_str());
    }
    g_key_file_remove_key(entry, group, hiddenKey, nullptr);
    if (hasKey(entry, gnomeEnabledKey)) {
        g_key_file_set_boolean(entry, group, gnomeEnabledKey, TRUE);
    }
    auto only = listOf(entry, onlyShowInKey);
    if (hasKey(entry, onlyShowInKey) && !hasAny(only, places.currentDesktops)) {
        only.insert(only.end(), places.currentDesktops.begin(), places.currentDesktops.end());
        setList(entry, onlyShowInKey, places.currentDesktops.empty() ? std::vector<std::string>() : only);
    }
    auto except = listOf(entry, notShowInKey);
    if (hasAny(except, places.currentDesktops)) {
        std::erase_if(except, [&](const std::string& name) { return hasAny({name}, places.currentDesktops); });
        setList(entry, notShowInKey, except);
    }
}

ServiceError errorOf(const std::string& path, const std::string& reason) {
    return {path + ": " + reason};
}

}  // namespace

AutostartLoginItem::Places AutostartLoginItem::placesOfThisProcess(std::string userFolder) {
    Places places;
    places.userFolder = std::move(userFolder);
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
    const auto entry = hasUserEntry() ? loadEntry(userEntry()) : systemEntry();
    return entry && isActiveEntry(entry.get(), places_);
}

std::optional<ServiceError> AutostartLoginItem::setEnabled(bool enabled) {
    auto error = change(enabled);
    if (error) {
        notices_.show(openAtLoginNotice(error->description), {});
    }
    return error;
}

std::optional<ServiceError> AutostartLoginItem::change(bool enabled) const {
    if (!enabled && !isEnabled()) {
        return std::nullopt;
    }
    if (places_.userFolder.empty()) {
        return ServiceError{"There is no home folder for the entry"};
    }
    auto entry = loadEntry(userEntry());
    if (entry && !isOurs(entry.get(), places_.program)) {
        return errorOf(userEntry(), "the entry starts another program, " + programOf(entry.get()));
    }
    return enabled ? switchOn(std::move(entry)) : switchOff(std::move(entry));
}

std::optional<ServiceError> AutostartLoginItem::switchOn(GKeyFileHandle entry) const {
    const auto system = systemEntry();
    const bool isSystemActive = system && isActiveEntry(system.get(), places_);
    if (isSystemActive && (!hasUserEntry() || (entry && isAsWritten(entry.get())))) {
        return hasUserEntry() ? removeUserEntry() : std::nullopt;
    }
    if (!entry) {
        return save(newEntry().get());
    }
    const std::string former = dataOf(entry.get());
    activate(entry.get(), places_);
    return dataOf(entry.get()) == former ? std::nullopt : save(entry.get());
}

std::optional<ServiceError> AutostartLoginItem::switchOff(GKeyFileHandle entry) const {
    if (!systemEntry() && entry && isAsWritten(entry.get())) {
        return removeUserEntry();
    }
    if (!entry) {
        entry = newEntry();
    }
    g_key_file_set_boolean(entry.get(), group, hiddenKey, TRUE);
    return save(entry.get());
}

std::string AutostartLoginItem::userEntry() const {
    return places_.userFolder + "/autostart/" + entryName();
}

bool AutostartLoginItem::hasUserEntry() const {
    std::error_code error;
    return !places_.userFolder.empty() && fs::exists(fs::symlink_status(userEntry(), error));
}

GKeyFileHandle AutostartLoginItem::systemEntry() const {
    for (const auto& folder : places_.systemFolders) {
        const auto path = folder + "/autostart/" + entryName();
        std::error_code error;
        if (fs::exists(path, error)) {
            return loadEntry(path);
        }
    }
    return nullptr;
}

GKeyFileHandle AutostartLoginItem::newEntry() const {
    GKeyFileHandle entry(g_key_file_new());
    const std::string name(AppInfo::name);
    const std::string icon(AppInfo::identifier);
    g_key_file_set_string(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
    g_key_file_set_string(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_NAME, name.c_str());
    g_key_file_set_string(entry.get(), group, execKey, quotedArgument(places_.program).c_str());
    g_key_file_set_string(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_ICON, icon.c_str());
    return entry;
}

bool AutostartLoginItem::isAsWritten(GKeyFile* entry) const {
    std::error_code error;
    const std::string command = commandOf(entry);
    const auto written = newEntry();
    g_key_file_set_string(written.get(), group, execKey, command.c_str());
    const auto shown = parsedEntry(dataOf(entry));
    g_key_file_remove_key(shown.get(), group, hiddenKey, nullptr);
    return argumentsOf(command).empty() && dataOf(shown.get()) == dataOf(written.get()) &&
           !fs::is_symlink(userEntry(), error);
}

std::optional<ServiceError> AutostartLoginItem::save(GKeyFile* entry) const {
    // Nothing is waited for here: the entry is of use at the next login only.
    FileOperations operations;
    operations.synchronize = [](int /*descriptor*/) { return 0; };
    operations.pause = [] {};
    // What is there and is no entry is not ours to lose.
    const auto former = loadEntry(userEntry()) ? FormerFile::replaced : FormerFile::keptBeside;
    const auto result = replaceSettingsFile(userEntry(), dataOf(entry), former, operations);
    return result.error ? std::optional(errorOf(userEntry(), result.error.message())) : std::nullopt;
}

std::optional<ServiceError> AutostartLoginItem::removeUserEntry() const {
    std::error_code error;
    fs::remove(userEntry(), error);
    return error ? std::optional(errorOf(userEntry(), error.message())) : std::nullopt;
}

}  // namespace thermopix
