#include "diagnostics/WebAssetExport.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "diagnostics/DarkStrip.h"
#include "diagnostics/DecodedPng.h"
#include "diagnostics/GlyphDocument.h"
#include "fakes/RecordingOutput.h"
#include "fakes/TemporaryFolder.h"
#include "pixels/PixelRasterizer.h"
#include "pixels/StatusImageRenderer.h"

namespace thermopix {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

std::string contents(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

std::string message(std::errc error) {
    return std::make_error_code(error).message();
}

Display displayOf(std::int64_t value, PetMood mood, bool isHot) {
    Display display;
    display.value = value;
    display.mood = mood;
    display.isHot = isHot;
    return display;
}

class WebAssetExportTest : public testing::Test {
protected:
    std::int32_t run(const fs::path& directory) {
        output.lines.clear();
        return WebAssetExport::run(directory.string(), output);
    }

    [[nodiscard]] std::map<std::string, std::string> files(const fs::path& directory) const {
        std::map<std::string, std::string> all;
        for (const auto& entry : fs::directory_iterator(directory)) {
            all[entry.path().filename()] = contents(entry.path());
        }
        return all;
    }

    TemporaryFolder temporary;
    RecordingOutput output;
};

TEST_F(WebAssetExportTest, WritesTheDocumentAndTwentyPicturesIntoADirectoryThatItMakes) {
    const auto directory = temporary.path() / "new" / "deep";
    EXPECT_EQ(run(directory), 0);
    EXPECT_EQ(output.lines, (Lines{"wrote glyphs.json and 20 PNGs to " + directory.string()}));
    std::set<std::string> names;
    for (const auto& [name, bytes] : files(directory)) {
        names.insert(name);
    }
    EXPECT_EQ(names, (std::set<std::string>{"glyphs.json",
                                            "style-arcade.png",
                                            "style-micro.png",
                                            "style-segment.png",
                                            "style-dotMatrix.png",
                                            "pet-cat-chilly.png",
                                            "pet-cat-content.png",
                                            "pet-cat-warm.png",
                                            "pet-cat-scorching.png",
                                            "pet-westie-chilly.png",
                                            "pet-westie-content.png",
                                            "pet-westie-warm.png",
                                            "pet-westie-scorching.png",
                                            "pet-mac-chilly.png",
                                            "pet-mac-content.png",
                                            "pet-mac-warm.png",
                                            "pet-mac-scorching.png",
                                            "pet-ghost-chilly.png",
                                            "pet-ghost-content.png",
                                            "pet-ghost-warm.png",
                                            "pet-ghost-scorching.png"}));
    EXPECT_EQ(contents(directory / "glyphs.json"), glyphDocument());
}

TEST_F(WebAssetExportTest, PrintsTheDirectoryAsItWasGiven) {
    const std::string given = temporary.path().string() + "/./web//";
    EXPECT_EQ(run(given), 0);
    EXPECT_EQ(output.lines, (Lines{"wrote glyphs.json and 20 PNGs to " + given}));
    EXPECT_TRUE(fs::exists(temporary.path() / "web" / "glyphs.json"));
}

TEST_F(WebAssetExportTest, RunningTwiceOverwritesEverythingWithTheSameBytes) {
    EXPECT_EQ(run(temporary.path()), 0);
    const auto first = files(temporary.path());
    std::ofstream(temporary.path() / "glyphs.json", std::ios::app) << "something longer that someone added";
    EXPECT_EQ(run(temporary.path()), 0);
    EXPECT_EQ(files(temporary.path()), first);
}

TEST_F(WebAssetExportTest, StylePicturesShowTheCatAt52DegreesWithTheLetter) {
    EXPECT_EQ(run(temporary.path()), 0);
    const std::pair<std::string, PixelStyle> styles[] = {{"style-arcade.png", PixelStyle::arcade},
                                                         {"style-micro.png", PixelStyle::micro},
                                                         {"style-segment.png", PixelStyle::segment},
                                                         {"style-dotMatrix.png", PixelStyle::dotMatrix}};
    for (const auto& [name, style] : styles) {
        const auto image = StatusImageRenderer::image(displayOf(52, PetMood::content, false),
                                                      {.style = style, .pet = PixelPet::cat, .showsUnitLetter = true});
        EXPECT_EQ(decodedPng(contents(temporary.path() / name)), darkStrip(image)) << name;
    }
}

TEST_F(WebAssetExportTest, PetPicturesShowTheMoodsSampleTemperatureWithoutTheLetter) {
    EXPECT_EQ(run(temporary.path()), 0);
    const std::pair<PetMood, std::int64_t> samples[] = {
        {PetMood::chilly, 38}, {PetMood::content, 55}, {PetMood::warm, 74}, {PetMood::scorching, 93}};
    for (const auto pet : {PixelPet::cat, PixelPet::westie, PixelPet::mac, PixelPet::ghost}) {
        for (const auto& [mood, celsius] : samples) {
            const auto name = "pet-" + std::string(rawValue(pet)) + "-" + std::string(rawValue(mood)) + ".png";
            const auto image =
                StatusImageRenderer::image(displayOf(celsius, mood, mood == PetMood::scorching), {.pet = pet});
            EXPECT_EQ(decodedPng(contents(temporary.path() / name)), darkStrip(image)) << name;
        }
    }
}

/// The cells of a compact picture on its strip, read back from the middle of each.
std::string cellsOf(const RgbaImage& strip) {
    std::string rows;
    for (std::int64_t y = 8; y < strip.height - 8; y += 4) {
        for (std::int64_t x = 16; x < strip.width - 16; x += 4) {
            const auto level = strip.at(x + 2, y + 2).red;
            rows += level == 240 ? '#' : level == 45 ? ':' : level == 18 ? '.' : '?';
        }
        rows += '\n';
    }
    return rows;
}

TEST_F(WebAssetExportTest, TheCatAt38DegreesIsThisPicture) {
    EXPECT_EQ(run(temporary.path()), 0);
    const auto strip = decodedPng(contents(temporary.path() / "pet-cat-chilly.png"));
    ASSERT_TRUE(strip);
    EXPECT_EQ(strip->width, 2 * (2 * (8 + 2 + 17) + 16));
    EXPECT_EQ(strip->height, 44);
    EXPECT_EQ(cellsOf(*strip),
              "##....##..#####..###...###.\n"
              "########.....#..#...#..#.#.\n"
              "#..##..#....#...#...#..###.\n"
              "########.....#...###.......\n"
              "###..###......#.#...#......\n"
              "########..#...#.#...#......\n"
              ".######....###...###.......\n");
}

TEST_F(WebAssetExportTest, TheSegmentStyleKeepsItsGhostsOnTheStrip) {
    EXPECT_EQ(run(temporary.path()), 0);
    const auto strip = decodedPng(contents(temporary.path() / "style-segment.png"));
    ASSERT_TRUE(strip);
    EXPECT_EQ(cellsOf(*strip),
              "##....##...##...##...##...##.\n"
              "########..#..:.:..#.#..#.#..:\n"
              "##.##.##..#..:.:..#..##..#..:\n"
              "########...##...##........::.\n"
              "###..###..:..#.#..:......#..:\n"
              "########..:..#.#..:......#..:\n"
              ".######....##...##........##.\n");
}

TEST_F(WebAssetExportTest, PicturesAreOpaqueAndSayThatTheyHaveTwoPixelsPerPoint) {
    EXPECT_EQ(run(temporary.path()), 0);
    const auto bytes = contents(temporary.path() / "style-arcade.png");
    const auto density = pngChunk(bytes, "pHYs");
    ASSERT_TRUE(density);
    ASSERT_EQ(density->size(), 9U);
    // 144 pixels per inch of 0.0254 m.
    EXPECT_EQ(bigEndian(*density, 0), 5669U);
    EXPECT_EQ(bigEndian(*density, 4), 5669U);
    EXPECT_EQ((*density)[8], 1);
    const auto strip = decodedPng(bytes);
    ASSERT_TRUE(strip);
    for (const auto& pixel : strip->pixels) {
        ASSERT_EQ(pixel.alpha, 255);
    }
    EXPECT_EQ(strip->at(0, 0), (RgbaColor{18, 18, 18, 255}));
    EXPECT_EQ(strip->at(strip->width - 1, strip->height - 1), (RgbaColor{18, 18, 18, 255}));
}

TEST_F(WebAssetExportTest, APathBelowAFileCannotBeCreated) {
    std::ofstream(temporary.path() / "file") << "in the way";
    const auto directory = temporary.path() / "file" / "web";
    EXPECT_EQ(run(directory), 1);
    EXPECT_EQ(output.lines,
              (Lines{"cannot create " + directory.string() + ": " + message(std::errc::not_a_directory)}));
    EXPECT_EQ(files(temporary.path()).size(), 1U);
}

TEST_F(WebAssetExportTest, AFileInPlaceOfTheDirectoryCannotBeCreated) {
    const auto file = temporary.path() / "file";
    std::ofstream(file) << "in the way";
    EXPECT_EQ(run(file), 1);
    ASSERT_EQ(output.lines.size(), 1U);
    EXPECT_TRUE(output.lines[0].starts_with("cannot create " + file.string() + ": "));
    EXPECT_EQ(contents(file), "in the way");
}

TEST_F(WebAssetExportTest, AnEmptyPathCannotBeCreated) {
    EXPECT_EQ(run(""), 1);
    ASSERT_EQ(output.lines.size(), 1U);
    EXPECT_TRUE(output.lines[0].starts_with("cannot create : "));
}

TEST_F(WebAssetExportTest, ADocumentThatCannotBeOpenedEndsTheRun) {
    fs::create_directory(temporary.path() / "glyphs.json");
    EXPECT_EQ(run(temporary.path()), 1);
    EXPECT_EQ(output.lines, (Lines{"cannot write glyphs.json: " + message(std::errc::is_a_directory)}));
    EXPECT_FALSE(fs::exists(temporary.path() / "style-arcade.png"));
}

TEST_F(WebAssetExportTest, ADocumentThatFindsNoSpaceEndsTheRun) {
    // No file may grow beyond what the document needs.
    const auto former = std::signal(SIGXFSZ, SIG_IGN);
    rlimit whole{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &whole), 0);
    const rlimit little{100, whole.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &little), 0);
    EXPECT_EQ(run(temporary.path()), 1);
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &whole), 0);
    std::signal(SIGXFSZ, former);
    EXPECT_EQ(output.lines, (Lines{"cannot write glyphs.json: " + message(std::errc::file_too_large)}));
}

TEST_F(WebAssetExportTest, ADocumentThatIsALinkIsNotWrittenThrough) {
    std::ofstream(temporary.path() / "precious") << "somebody's";
    fs::create_directory(temporary.path() / "web");
    for (const char* target : {"../precious", "../missing"}) {
        fs::create_symlink(target, temporary.path() / "web" / "glyphs.json");
        EXPECT_EQ(run(temporary.path() / "web"), 1);
        EXPECT_EQ(output.lines,
                  (Lines{"cannot write glyphs.json: " + message(std::errc::too_many_symbolic_link_levels)}));
        fs::remove(temporary.path() / "web" / "glyphs.json");
    }
    EXPECT_EQ(contents(temporary.path() / "precious"), "somebody's");
    EXPECT_FALSE(fs::exists(temporary.path() / "missing"));
}

TEST_F(WebAssetExportTest, ADocumentThatIsAPipeEndsTheRunAtOnce) {
    ASSERT_EQ(mkfifo((temporary.path() / "glyphs.json").c_str(), 0600), 0);
    EXPECT_EQ(run(temporary.path()), 1);
    EXPECT_EQ(output.lines, (Lines{"cannot write glyphs.json: " + message(std::errc::operation_not_supported)}));
}

TEST_F(WebAssetExportTest, PicturesThatAreLinksOrPipesAreSkipped) {
    std::ofstream(temporary.path() / "precious") << "somebody's";
    fs::create_symlink("precious", temporary.path() / "style-micro.png");
    ASSERT_EQ(mkfifo((temporary.path() / "pet-ghost-warm.png").c_str(), 0600), 0);
    EXPECT_EQ(run(temporary.path()), 0);
    EXPECT_EQ(output.lines, (Lines{"wrote glyphs.json and 18 PNGs to " + temporary.path().string()}));
    EXPECT_EQ(contents(temporary.path() / "precious"), "somebody's");
    EXPECT_TRUE(fs::is_symlink(temporary.path() / "style-micro.png"));
}

TEST_F(WebAssetExportTest, PicturesThatCannotBeWrittenAreSkippedAndNotCounted) {
    fs::create_directory(temporary.path() / "style-micro.png");
    fs::create_directory(temporary.path() / "pet-ghost-warm.png");
    EXPECT_EQ(run(temporary.path()), 0);
    EXPECT_EQ(output.lines, (Lines{"wrote glyphs.json and 18 PNGs to " + temporary.path().string()}));
    EXPECT_TRUE(fs::exists(temporary.path() / "pet-ghost-scorching.png"));
}

}  // namespace
}  // namespace thermopix
