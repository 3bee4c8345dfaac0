#include <cstdint>
#include <string_view>

#include "base/Fatal.h"
#include "environment/Preferences.h"

using namespace thermopix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto decoded = decodePreferences({reinterpret_cast<const char*>(data), size});
    if (decoded) {
        const std::string document = encodePreferences(*decoded);
        const auto again = decodePreferences(document);
        require(again == decoded, "a record survives its document");
        require(encodePreferences(*again) == document, "equal records have equal documents");
    }
    return 0;
}
