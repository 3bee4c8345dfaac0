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

TEST_P(ListedValues, AreThoseOfTheTable) {
    const Listing& listing = GetParam();
    std::ifstream file(testFile("..") / listing.path);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    std::smatch list;
    ASSERT_TRUE(std::regex_search(text, list, std::regex(listing.list))) << listing.path << " has no such list";
    const std::string items = list[1];
    const std::regex item(listing.item);
    Values listed;
    for (std::sregex_iterator match(items.begin(), items.end(), item); match != std::sregex_iterator(); ++match) {
        listed.insert((*match)[1]);
    }
    EXPECT_EQ(listed, listing.values) << listing.path;
}

INSTANTIATE_TEST_SUITE_P(By, ListedValues, testing::ValuesIn(listings));

}  // namespace
}  // namespace thermopix
