#include "platform/linux/updates/AppcastReader.h"

#include <expat.h>

#include <array>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace thermopix {

namespace {

constexpr std::size_t maximumItems = 1000;
constexpr std::size_t maximumTextLength = 4096;

// The parser names what has a namespace "namespace name".
#define UPDATE_NAMESPACE "http://www.andymatuschak.org/xml-namespaces/sparkle "
constexpr std::string_view criticalUpdateElement = UPDATE_NAMESPACE "criticalUpdate";
constexpr std::string_view versionName = UPDATE_NAMESPACE "version";
constexpr std::string_view shortVersionName = UPDATE_NAMESPACE "shortVersionString";
constexpr std::string_view systemName = UPDATE_NAMESPACE "os";

struct TextElementRow {
    std::string_view name;
    std::string AppcastItem::*member;
};

/// The elements of an item whose text is kept.
constexpr std::array textElements{
    TextElementRow{versionName, &AppcastItem::version},
    TextElementRow{shortVersionName, &AppcastItem::shortVersion},
    TextElementRow{UPDATE_NAMESPACE "minimumSystemVersion", &AppcastItem::minimumSystemVersion},
    TextElementRow{UPDATE_NAMESPACE "channel", &AppcastItem::channel},
    TextElementRow{UPDATE_NAMESPACE "releaseNotesLink", &AppcastItem::releaseNotesLink},
    TextElementRow{"link", &AppcastItem::link},
};
#undef UPDATE_NAMESPACE

std::string trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string()
                                           : std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

std::string attribute(const XML_Char** attributes, std::string_view name) {
    for (; *attributes != nullptr; attributes += 2) {
        if (*attributes == name) {
            const std::string value = trimmed(attributes[1]);
            return value.size() > maximumTextLength ? std::string() : value;
        }
    }
    return {};
}

void fillIfEmpty(std::string& text, std::string value) {
    if (text.empty()) {
        text = std::move(value);
    }
}

/// Gathers a feed from the parser's events. Depth 1 is the document's element, 2 its channel, 3 an item.
class Gatherer {
public:
    explicit Gatherer(XML_Parser parser) : parser_(parser) {}

    void elementStarts(std::string_view name, const XML_Char** attributes) {
        ++depth_;
        if (depth_ == 1) {
            require(name == "rss");
        } else if (depth_ == 2 && name == "channel") {
            hasChannel_ = isInChannel_ = true;
        } else if (depth_ == 3 && isInChannel_ && name == "item") {
            require(appcast_.items.size() < maximumItems);
            item_ = &appcast_.items.emplace_back();
            enclosureVersion_.clear();
            enclosureShortVersion_.clear();
        } else if (depth_ == 3 && isInChannel_ && name == "link") {
            gather(appcast_.link);
        } else if (item_ != nullptr) {
            partOfItemStarts(name, attributes);
        }
    }

    void text(std::string_view bytes) {
        if (destination_ != nullptr && depth_ == textDepth_) {
            text_.append(bytes.substr(0, maximumTextLength + 1 - std::min(text_.size(), maximumTextLength + 1)));
        }
    }

    void elementEnds() {
        if (destination_ != nullptr && depth_ == textDepth_) {
            if (text_.size() <= maximumTextLength) {
                fillIfEmpty(*destination_, trimmed(text_));
            }
            destination_ = nullptr;
        }
        if (depth_ == 3 && item_ != nullptr) {
            fillIfEmpty(item_->version, std::move(enclosureVersion_));
            fillIfEmpty(item_->shortVersion, std::move(enclosureShortVersion_));
            item_ = nullptr;
        }
        isInChannel_ = isInChannel_ && depth_ > 2;
        --depth_;
    }

    void documentTypeStarts() { require(false); }

    [[nodiscard]] std::optional<Appcast> finish() {
        return hasChannel_ ? std::optional(std::move(appcast_)) : std::nullopt;
    }

private:
    void partOfItemStarts(std::string_view name, const XML_Char** attributes) {
        // Older feeds have it inside an element of tags.
        if (name == criticalUpdateElement) {
            item_->isCritical = true;
            fillIfEmpty(item_->criticalBelow, attribute(attributes, versionName));
            return;
        }
        if (depth_ != 4) {
            return;
        }
        if (name == "enclosure") {
            item_->systems.push_back(attribute(attributes, systemName));
            fillIfEmpty(enclosureVersion_, attribute(attributes, versionName));
            fillIfEmpty(enclosureShortVersion_, attribute(attributes, shortVersionName));
            return;
        }
        for (const auto& row : textElements) {
            if (row.name == name) {
                gather(item_->*row.member);
            }
        }
    }

    void gather(std::string& destination) {
        destination_ = &destination;
        textDepth_ = depth_;
        text_.clear();
    }

    void require(bool isFine) {
        if (!isFine) {
            XML_StopParser(parser_, XML_FALSE);
        }
    }

    XML_Parser parser_;
    Appcast appcast_;
    int depth_ = 0;
    bool hasChannel_ = false;
    bool isInChannel_ = false;
    /// Where we are inside an item.
    AppcastItem* item_ = nullptr;
    /// What an item's elements say goes before what its download's attributes say.
    std::string enclosureVersion_;
    std::string enclosureShortVersion_;
    /// Where the text of the element at this depth goes.
    std::string* destination_ = nullptr;
    int textDepth_ = 0;
    std::string text_;
};

Gatherer& gatherer(void* data) {
    return *static_cast<Gatherer*>(data);
}

}  // namespace

std::optional<Appcast> readAppcast(std::string_view document) {
    if (document.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return std::nullopt;
    }
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser(
        XML_ParserCreateNS(nullptr, ' '), &XML_ParserFree);
    Gatherer gathered(parser.get());
    XML_SetUserData(parser.get(), &gathered);
    XML_SetElementHandler(
        parser.get(),
        [](void* data, const XML_Char* name, const XML_Char** attributes) {
            gatherer(data).elementStarts(name, attributes);
        },
        [](void* data, const XML_Char* /*name*/) { gatherer(data).elementEnds(); });
    XML_SetCharacterDataHandler(parser.get(), [](void* data, const XML_Char* text, int length) {
        gatherer(data).text({text, static_cast<std::size_t>(length)});
    });
    XML_SetStartDoctypeDeclHandler(parser.get(), [](void* data, const XML_Char* /*name*/, const XML_Char* /*systemId*/,
                                                    const XML_Char* /*publicId*/, int /*hasInternalSubset*/) {
        gatherer(data).documentTypeStarts();
    });
    const auto status = XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), XML_TRUE);
    return status == XML_STATUS_OK ? gathered.finish() : std::nullopt;
}

}  // namespace thermopix
