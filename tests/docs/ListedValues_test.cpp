// Where the values of an enumeration are listed by hand, outside the tables of the core.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "environment/Preferences.h"
#include "fakes/TestFiles.h"
#include "sensing/PetMood.h"
#include "sensing/ThermalPressure.h"
#include "settings/CasePicker.h"

namespace thermopix {
namespace {

using Values = std::set<std::string>;

template <typename Case>
Values valuesOf() {
    Values values;
    for (const Case value : allCases<Case>()) {
        values.insert(eventValue(value));
    }
    return values;
}

Values drawnPets() {
    Values pets = valuesOf<PixelPet>();
    pets.erase(eventValue(PixelPet::none));
    return pets;
}

/// Within what `list` captures of the file, `item` captures these values and no other.
struct Listing {
    std::string path;
    std::string list;
    std::string item;
    Values values;
};

// gtest names the case by it.
void PrintTo(const Listing& listing, std::ostream* out) {
    *out << listing.path << ": " << listing.list;
}

const std::string manual = "docs/man/thermopix.5.in";
const std::string element = "web/readout/ReadoutElement.js";
const std::string quoted = "\\\\\\(dq(\\w+)";
const std::string anyWord = "(\\w+)";

const Listing listings[] = {
    {manual, "\\.BR (unit [^]*?)\\.TP", quoted, valuesOf<TemperatureUnit>()},
    {manual, "\\.BR (style [^]*?)\\.TP", quoted, valuesOf<PixelStyle>()},
    {manual, "\\.BR (size [^]*?)\\.TP", quoted, valuesOf<PixelSize>()},
    {manual, "\\.BR (pet [^]*?)\\.TP", quoted, valuesOf<PixelPet>()},
    {manual, "\\.BR (source [^]*?)\\.TP", quoted, valuesOf<SensorSource>()},
    {manual, "\\.BR (refreshInterval [^]*?)\\.TP", "(\\d+)", valuesOf<RefreshInterval>()},
    {element, "\\* +unit +(.*)", anyWord, valuesOf<TemperatureUnit>()},
    {element, "pixel-style  (.*);", anyWord, valuesOf<PixelStyle>()},
    {element, "\\* +size +(.*), or", anyWord, valuesOf<PixelSize>()},
    {element, "\\* +pet +(.*)", anyWord, valuesOf<PixelPet>()},
    {element, "\\* +mood +(.*), instead", anyWord, valuesOf<PetMood>()},
    {element, "\\* +pressure +(.*):", anyWord, valuesOf<ThermalPressure>()},
    {"tests/shots/trays", "STYLES = (.*)", anyWord, valuesOf<PixelStyle>()},
    {"tests/shots/terminal", "for style in \\((.*)\\)", anyWord, valuesOf<PixelStyle>()},
    {"tests/shots/readouts", "rows=\\(([^]*?)\n\\)", "style-(\\w+)", valuesOf<PixelStyle>()},
    {"tests/shots/readouts", "rows=\\(([^]*?)\n\\)", "pet-(\\w+)", drawnPets()},
    {"tools/readout_picture.sh", "rows=\\(([^]*?)\n\\)", "style-(\\w+)", valuesOf<PixelStyle>()},
    {"tools/readout_picture.sh", "rows=\\(([^]*?)\n\\)", "pet-(\\w+)", drawnPets()},
};

class ListedValues : public testing::TestWithParam<Listing> {};

/// What `item` captures of the file, or of what `list` captures of it.
Values listedIn(const std::string& path, const std::string& item, const std::string& list = "") {
    std::ifstream file(testFile("..") / path);
    std::string items(std::istreambuf_iterator<char>(file), {});
    if (!list.empty()) {
        const std::string text = items;
        std::smatch found;
        EXPECT_TRUE(std::regex_search(text, found, std::regex(list))) << path << " has no such list";
        items = found.str(1);
    }
    const std::regex pattern(item);
    Values values;
    for (std::sregex_iterator match(items.begin(), items.end(), pattern); match != std::sregex_iterator(); ++match) {
        values.insert((*match)[1]);
    }
    return values;
}

TEST_P(ListedValues, AreThoseOfTheTable) {
    const Listing& listing = GetParam();
    EXPECT_EQ(listedIn(listing.path, listing.item, listing.list), listing.values) << listing.path;
}

INSTANTIATE_TEST_SUITE_P(By, ListedValues, testing::ValuesIn(listings));

TEST(ListedTrays, AreExpectedByATest) {
    const Values expected = listedIn("tests/tray/TrayHost_test.cpp", "\"([\\w-]+)\"");
    for (const auto& process : listedIn("src/tray/TrayHost.cpp", "HostRow\\{\"([\\w-]+)")) {
        const auto first = expected.lower_bound(process);
        EXPECT_TRUE(first != expected.end() && first->starts_with(process))
            << "tests/tray/TrayHost_test.cpp expects nothing of " << process;
    }
}

TEST(ListedTrays, AreEachPhotographed) {
    EXPECT_EQ(listedIn("tests/desktop/CMakeLists.txt", "([\\w-]+)", "host IN ITEMS (.*)\\)"),
              listedIn("tests/desktop/hosts.py", "\n    name = \"([\\w-]+)\""));
}

}  // namespace
}  // namespace thermopix
