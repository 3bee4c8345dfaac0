// Any bytes as a feed and as a verdict: what is read is within its bounds, and what is judged is fit to be shown.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/Fatal.h"
#include "platform/linux/updates/AppcastReader.h"
#include "updates/AppcastJudgement.h"
#include "updates/PageAddress.h"
#include "updates/Version.h"

using namespace thermopix;

namespace {

/// What a fuzzer would not come upon by itself.
constexpr std::array<std::string_view, 24> words{
    R"(<rss xmlns:s="http://www.andymatuschak.org/xml-namespaces/sparkle">)",
    "<channel>",
    "<item>",
    "</item>",
    "</channel></rss>",
    "<link>https://example.org/",
    "</link>",
    "<s:version>",
    "</s:version>",
    "<s:shortVersionString>",
    "</s:shortVersionString>",
    "<s:minimumSystemVersion>6.",
    "</s:minimumSystemVersion>",
    "<s:channel>",
    "</s:channel>",
    "<s:releaseNotesLink>",
    "</s:releaseNotesLink>",
    "<s:criticalUpdate s:version=\"",
    "<enclosure s:os=\"linux\" s:version=\"",
    "\" s:shortVersionString=\"",
    "\"/>",
    "<![CDATA[",
    "]]>",
    "<!DOCTYPE rss [<!ENTITY e 'x'>]>",
};

/// Bytes that are no ASCII stand for words.
std::string spelledOut(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += value < 0x80 ? std::string_view(&byte, 1) : words[value % words.size()];
    }
    return text;
}

void requireFit(const UpdateVerdict& verdict) {
    require(verdictFromLine(verdictLine(verdict)) == verdict, "a verdict survives its line");
    if (const auto* update = std::get_if<UpdateAvailable>(&verdict)) {
        require(Version::parse(update->version).has_value(), "a version can be read");
        require(!update->page || isPageAddress(*update->page), "a page is an HTTPS address");
    }
}

void requireFit(const Appcast& appcast) {
    require(appcast.items.size() <= 1000, "a feed has at most 1000 releases");
    for (const auto& item : appcast.items) {
        for (const auto* text : {&item.version, &item.shortVersion, &item.minimumSystemVersion, &item.channel,
                                 &item.link, &item.releaseNotesLink, &item.criticalBelow}) {
            require(text->size() <= 4096, "a text is within its bounds");
        }
    }
}

void readAndJudge(std::string_view document) {
    if (const auto appcast = readAppcast(document)) {
        requireFit(*appcast);
        const auto verdict = judgeAppcast(*appcast, {"1.2", "340", "linux", "6.1"});
        requireFit(verdict);
        if (const auto* update = std::get_if<UpdateAvailable>(&verdict)) {
            require(*Version::parse("1.2") < *Version::parse(update->version), "an update is newer");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    readAndJudge(bytes);
    readAndJudge(spelledOut(bytes));
    readAndJudge(spelledOut("\xC0\xC1" + std::string(bytes) + "\xC4"));
    if (const auto verdict = verdictFromLine(bytes)) {
        requireFit(*verdict);
    }
    if (const auto version = Version::parse(bytes)) {
        require(*version == *version && !(*version < *version), "a version is as old as itself");
    }
    return 0;
}
