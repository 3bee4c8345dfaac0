#include "base/Unicode.h"

#include <utf8proc.h>

#include <array>
#include <cstdint>

namespace thermopix {

namespace {

// Up to these code points the answers need none of the library's tables, which then stay out of memory.
constexpr std::int32_t firstBeyondAscii = 0x80;
constexpr std::int32_t firstCombiningMark = 0x300;

constexpr std::int32_t capitalIWithDotAbove = 0x130;
constexpr std::string_view smallIWithCombiningDot = "i\u0307";
constexpr std::string_view replacementCharacter = "\uFFFD";

struct Decoded {
    std::int32_t codepoint;  // negative for an invalid byte
    std::size_t length;
};

Decoded decodeFirst(std::string_view text) {
    if (const auto first = static_cast<unsigned char>(text.front()); first < firstBeyondAscii) {
        return {first, 1};
    }
    std::int32_t codepoint = -1;
    const auto length = utf8proc_iterate(reinterpret_cast<const std::uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &codepoint);
    if (length <= 0) {
        return {-1, 1};
    }
    return {codepoint, static_cast<std::size_t>(length)};
}

/// Whether a user-perceived character ends between two valid code points; `state` remembers what came before.
bool isBoundary(std::int32_t previous, std::int32_t next, std::int32_t& state) {
    if (previous < firstCombiningMark && next < firstCombiningMark) {
        state = 0;
        return previous != '\r' || next != '\n';
    }
    return utf8proc_grapheme_break_stateful(previous, next, &state);
}

std::int32_t lowercasedCodepoint(std::int32_t codepoint) {
    if (codepoint < firstBeyondAscii) {
        return codepoint >= 'A' && codepoint <= 'Z' ? codepoint - 'A' + 'a' : codepoint;
    }
    return utf8proc_tolower(codepoint);
}

void appendCodepoint(std::string& text, std::int32_t codepoint) {
    std::array<std::uint8_t, 4> bytes{};
    const auto length = utf8proc_encode_char(codepoint, bytes.data());
    text.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
}

}  // namespace

void forEachCharacter(std::string_view text, FunctionView<void(std::string_view)> visit) {
    std::int32_t state = 0;
    std::int32_t previous = -1;
    std::size_t start = 0;
    std::size_t position = 0;
    while (position < text.size()) {
        const auto [codepoint, length] = decodeFirst(text.substr(position));
        const bool breaks =
            position > start && (previous < 0 || codepoint < 0 || isBoundary(previous, codepoint, state));
        if (breaks) {
            visit(text.substr(start, position - start));
            start = position;
            if (previous < 0 || codepoint < 0) {
                state = 0;
            }
        }
        previous = codepoint;
        position += length;
    }
    if (position > start) {
        visit(text.substr(start, position - start));
    }
}

std::vector<std::string_view> characters(std::string_view text) {
    std::vector<std::string_view> found;
    forEachCharacter(text, [&found](std::string_view character) { found.push_back(character); });
    return found;
}

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    forEachCharacter(text, [&count](std::string_view) { ++count; });
    return count;
}

std::string lowercased(std::string_view text) {
    std::string lower;
    lower.reserve(text.size());
    while (!text.empty()) {
        const auto [codepoint, length] = decodeFirst(text);
        if (codepoint < 0) {
            lower += text.front();
        } else if (codepoint == capitalIWithDotAbove) {
            lower += smallIWithCombiningDot;
        } else {
            appendCodepoint(lower, lowercasedCodepoint(codepoint));
        }
        text.remove_prefix(length);
    }
    return lower;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\v\f";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string repairedUtf8(std::string_view bytes) {
    std::string repaired;
    repaired.reserve(bytes.size());
    while (!bytes.empty()) {
        const auto [codepoint, length] = decodeFirst(bytes);
        repaired += codepoint < 0 ? replacementCharacter : bytes.substr(0, length);
        bytes.remove_prefix(length);
    }
    return repaired;
}

std::string paddedRight(std::string_view text, std::size_t columns) {
    std::string padded(text);
    const std::size_t count = characterCount(text);
    if (count < columns) {
        padded.append(columns - count, ' ');
    }
    return padded;
}

}  // namespace thermopix
