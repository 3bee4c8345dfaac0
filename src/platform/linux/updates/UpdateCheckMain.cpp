// thermopix-update-check: fetches the feed once, judges it, prints the verdict as one line of JSON. Started by the
// program, so that the resident process holds no network code.
#include <curl/curl.h>
#include <sys/utsname.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/linux/updates/AppcastReader.h"
#include "platform/linux/updates/FeedFetch.h"
#include "updates/AppcastJudgement.h"
#include "updates/UpdateVerdict.h"

namespace {

using namespace thermopix;

constexpr int usageError = 2;

struct Options {
    std::string feed;
    std::string version;
    std::string build;
    std::string systemVersion;
    std::string authorities;
    std::string milliseconds = "30000";
    std::string bytes = "1048576";
};

struct OptionRow {
    std::string_view name;
    std::string Options::*member;
    std::string_view help;
};

constexpr std::array optionRows{
    OptionRow{"--feed", &Options::feed, "ADDRESS       the feed of releases"},
    OptionRow{"--version", &Options::version, "VERSION    of the program that asks"},
    OptionRow{"--build", &Options::build, "NUMBER       its build"},
    OptionRow{"--system-version", &Options::systemVersion, "VERSION  in place of the kernel's"},
    OptionRow{"--authorities", &Options::authorities, "FILE   certificates to trust in place of the system's"},
    OptionRow{"--milliseconds", &Options::milliseconds, "COUNT for the whole check (30000)"},
    OptionRow{"--bytes", &Options::bytes, "COUNT        of the feed at most (1048576)"},
};

std::optional<Options> optionsOf(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        const auto* const row = std::find_if(optionRows.begin(), optionRows.end(),
                                             [&](const OptionRow& option) { return option.name == arguments[i]; });
        if (row == optionRows.end() || i + 1 == arguments.size()) {
            return std::nullopt;
        }
        options.*row->member = arguments[i + 1];
    }
    return options.feed.empty() || options.version.empty() ? std::nullopt : std::optional(options);
}

/// A count of at least 1.
std::optional<std::uint32_t> countOf(std::string_view text) {
    std::uint32_t count = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, count);
    return result.ec == std::errc() && result.ptr == end && count > 0 ? std::optional(count) : std::nullopt;
}

/// The numbers at the front of the kernel's release: "6.1.0" of "6.1.0-13-amd64".
std::string kernelVersion() {
    utsname names{};
    const std::string_view release = uname(&names) == 0 ? names.release : "";
    return std::string(release.substr(0, release.find_first_not_of("0123456789.")));
}

int showUsage() {
    std::fputs("usage: thermopix-update-check --feed ADDRESS --version VERSION [OPTIONS]\n", stderr);
    for (const auto& row : optionRows) {
        std::fprintf(stderr, "  %s %s\n", std::string(row.name).c_str(), std::string(row.help).c_str());
    }
    return usageError;
}

UpdateVerdict check(const Options& options, const FetchLimits& limits) {
    const auto fetched = fetchFeed(options.feed, "Thermopix/" + options.version, limits);
    if (const auto* failed = std::get_if<CheckFailed>(&fetched)) {
        return *failed;
    }
    const auto appcast = readAppcast(std::get<std::string>(fetched));
    if (!appcast) {
        return CheckFailed{CheckFailure::unreadable, options.feed + ": not a feed of releases"};
    }
    const auto systemVersion = options.systemVersion.empty() ? kernelVersion() : options.systemVersion;
    return judgeAppcast(*appcast, {options.version, options.build, "linux", systemVersion});
}

}  // namespace

int main(int argc, char** argv) {
    const auto options = optionsOf(std::vector<std::string>(argv + std::min(argc, 1), argv + argc));
    const auto milliseconds = options ? countOf(options->milliseconds) : std::nullopt;
    const auto bytes = options ? countOf(options->bytes) : std::nullopt;
    if (!milliseconds || !bytes) {
        return showUsage();
    }
    curl_global_init(CURL_GLOBAL_DEFAULT);
    FetchLimits limits;
    limits.time = std::chrono::milliseconds(*milliseconds);
    limits.bytes = *bytes;
    limits.authorities = options->authorities;
    const auto verdict = check(*options, limits);
    const bool isWritten = std::puts(verdictLine(verdict).c_str()) >= 0 && std::fflush(stdout) == 0;
    return isWritten ? EXIT_SUCCESS : EXIT_FAILURE;
}
