#include "pixels/PixelPet.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "pixels/PixelArt.h"

namespace thermopix {
namespace {

struct PrintedFrame {
    PixelPet pet;
    PetMood mood;
    /// Top row first.
    std::string_view rows;
};

const std::vector<PrintedFrame> printedFrames{
    {PixelPet::cat, PetMood::chilly, "##....## ######## #..##..# ######## ###..### ######## .######."},
    {PixelPet::cat, PetMood::content, "##....## ######## ##.##.## ######## ###..### ######## .######."},
    {PixelPet::cat, PetMood::warm, "##....## ######## #..##..# #..##..# ######## ##....## .######."},
    {PixelPet::cat, PetMood::scorching, "##....## ######## #.####.# ##.##.## ######## ##....## .######."},
    {PixelPet::westie, PetMood::chilly, ".##..##. .##..##. ######## #..##..# ######## ###..### .######."},
    {PixelPet::westie, PetMood::content, ".##..##. .##..##. ######## ##.##.## ######## ###..### .######."},
    {PixelPet::westie, PetMood::warm, ".##..##. .##..##. ######## #..##..# #..##..# ##....## ##.##.##"},
    {PixelPet::westie, PetMood::scorching, ".##..##. .##..##. ######## #.####.# ##.##.## ##....## ##.##.##"},
    {PixelPet::mac, PetMood::chilly, "######## #..##..# ######## ###..### ######## ...##... .######."},
    {PixelPet::mac, PetMood::content, "######## ##.##.## ######## ##....## ######## ...##... .######."},
    {PixelPet::mac, PetMood::warm, "######## #..##..# #..##..# ###..### ######## ...##... .######."},
    {PixelPet::mac, PetMood::scorching, "######## #.####.# ##.##.## ##....## ######## ...##... .######."},
    {PixelPet::ghost, PetMood::chilly, "..####.. .######. ######## #..##..# ######## ######## #.##.##."},
    {PixelPet::ghost, PetMood::content, "..####.. .######. ######## ##.##.## ######## ######## #.##.##."},
    {PixelPet::ghost, PetMood::warm, "..####.. .######. #..##..# #..##..# ######## ##....## #.##.##."},
    {PixelPet::ghost, PetMood::scorching, "..####.. .######. #.####.# ##.##.## ######## ##....## #.##.##."},
};

const std::vector<PrintedFrame> printedBlinkFrames{
    {PixelPet::cat, PetMood::content, "##....## ######## #..##..# ######## ###..### ######## .######."},
    {PixelPet::westie, PetMood::content, ".##..##. .##..##. ######## #..##..# ######## ###..### .######."},
    {PixelPet::mac, PetMood::content, "######## #..##..# ######## ##....## ######## ...##... .######."},
    {PixelPet::ghost, PetMood::content, "..####.. .######. ######## #..##..# ######## ######## #.##.##."},
};

std::string spriteRows(PixelPet pet, PetMood mood, bool blinking) {
    const auto picture = sprite(pet, mood, blinking);
    return picture ? rowsOf(*picture) : "no sprite";
}

TEST(PixelPet, ShowsEachMoodAsPrinted) {
    EXPECT_EQ(printedFrames.size(), 16U);
    for (const PrintedFrame& frame : printedFrames) {
        EXPECT_EQ(spriteRows(frame.pet, frame.mood, false), frame.rows)
            << rawValue(frame.pet) << " " << rawValue(frame.mood);
    }
}

TEST(PixelPet, ClosesItsEyesOnlyWhenContentOrWarm) {
    for (const PrintedFrame& blink : printedBlinkFrames) {
        EXPECT_EQ(spriteRows(blink.pet, PetMood::content, true), blink.rows) << rawValue(blink.pet);
        EXPECT_EQ(spriteRows(blink.pet, PetMood::warm, true), blink.rows) << rawValue(blink.pet);
        for (const PetMood mood : {PetMood::chilly, PetMood::scorching}) {
            EXPECT_EQ(spriteRows(blink.pet, mood, true), spriteRows(blink.pet, mood, false)) << rawValue(blink.pet);
        }
    }
}

TEST(PixelPet, HasNoSpriteWhenThereIsNoPet) {
    for (const PetMood mood : allCases<PetMood>()) {
        EXPECT_EQ(sprite(PixelPet::none, mood, false), std::nullopt);
        EXPECT_EQ(sprite(PixelPet::none, mood, true), std::nullopt);
    }
}

TEST(PixelPet, IsEightBySevenCellsOfFullInk) {
    for (const PixelPet pet : {PixelPet::cat, PixelPet::westie, PixelPet::mac, PixelPet::ghost}) {
        for (const PetMood mood : allCases<PetMood>()) {
            for (const bool blinking : {false, true}) {
                const auto picture = sprite(pet, mood, blinking);
                ASSERT_TRUE(picture.has_value());
                EXPECT_EQ(picture->width(), petWidth);
                EXPECT_EQ(picture->height(), petHeight);
                for (const Ink ink : picture->cells()) {
                    EXPECT_NE(ink, Ink::ghost);
                }
            }
        }
    }
}

TEST(PixelPet, StandsInPickersWithNoPetLast) {
    const auto order = pixelPetDisplayOrder();
    EXPECT_EQ(std::vector(order.begin(), order.end()),
              (std::vector{PixelPet::cat, PixelPet::westie, PixelPet::mac, PixelPet::ghost, PixelPet::none}));
}

TEST(PixelPet, IsNamedAndDescribedInItsTable) {
    EXPECT_EQ(fromRawValue<PixelPet>("westie"), PixelPet::westie);
    EXPECT_EQ(fromRawValue<PixelPet>("hamster"), std::nullopt);
    EXPECT_EQ(title(PixelPet::none), "No pet");
    EXPECT_EQ(subtitle(PixelPet::mac), "Smiles back, the way the Finder does. Until it doesn't.");
}

}  // namespace
}  // namespace thermopix
