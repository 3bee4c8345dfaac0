#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/Fatal.h"
#include "base/Unicode.h"

using namespace thermopix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);

    std::string joined;
    for (const auto character : characters(text)) {
        require(!character.empty(), "a character is never empty");
        joined += character;
    }
    require(joined == text, "the characters of a text are the text");

    const std::string repaired = repairedUtf8(text);
    require(repairedUtf8(repaired) == repaired, "repairing twice changes nothing");
    require(characterCount(repaired) <= characterCount(text), "repairing never adds characters");

    const std::string lower = lowercased(text);
    require(lowercased(lower) == lower, "lower-casing twice changes nothing");

    const std::string padded = paddedRight(text, 40);
    const std::size_t missing = 40 - std::min<std::size_t>(40, characterCount(text));
    require(padded == std::string(text) + std::string(missing, ' '), "padding appends a space for each character");
    return 0;
}
