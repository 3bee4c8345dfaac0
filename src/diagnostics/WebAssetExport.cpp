#include "diagnostics/WebAssetExport.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <ios>
#include <string_view>
#include <system_error>
#include <vector>

#include "diagnostics/DarkStrip.h"
#include "diagnostics/GlyphDocument.h"
#include "pixels/PixelPet.h"
#include "pixels/PixelSize.h"
#include "pixels/PixelStyle.h"
#include "pixels/PngWriter.h"
#include "pixels/StatusImageRenderer.h"
#include "sensing/Display.h"
#include "sensing/PetMood.h"

namespace thermopix::WebAssetExport {

namespace {

struct Picture {
    std::string fileName;
    StatusImage image;
};

struct MoodSample {
    PetMood mood;
    std::int64_t celsius;
    bool isHot;
};

constexpr std::array moodSamples{
    MoodSample{PetMood::chilly, 38, false},
    MoodSample{PetMood::content, 55, false},
    MoodSample{PetMood::warm, 74, false},
    MoodSample{PetMood::scorching, 93, true},
};
static_assert(moodSamples.size() == caseCount<PetMood>);

Display displayOf(const MoodSample& sample) {
    Display display;
    display.value = sample.celsius;
    display.mood = sample.mood;
    display.isHot = sample.isHot;
    return display;
}

Picture stylePicture(PixelStyle style) {
    const auto display = displayOf({PetMood::content, 52, false});
    return {fmt::format("style-{}.png", rawValue(style)),
            StatusImageRenderer::image(display, {.style = style, .pet = PixelPet::cat, .showsUnitLetter = true})};
}

Picture petPicture(PixelPet pet, const MoodSample& sample) {
    return {fmt::format("pet-{}-{}.png", rawValue(pet), rawValue(sample.mood)),
            StatusImageRenderer::image(displayOf(sample), {.pet = pet})};
}

std::vector<Picture> pictures() {
    std::vector<Picture> all;
    for (const auto style : pixelStyleDisplayOrder()) {
        all.push_back(stylePicture(style));
    }
    for (const auto pet : allCases<PixelPet>()) {
        if (pet == PixelPet::none) {
            continue;
        }
        for (const auto& sample : moodSamples) {
            all.push_back(petPicture(pet, sample));
        }
    }
    return all;
}

/// The error of the system call that failed last, for streams, which keep none themselves.
std::error_code lastStreamError() {
    return errno == 0 ? make_error_code(std::io_errc::stream) : std::error_code(errno, std::generic_category());
}

/// Why what stands at the path is not to be written to: a link is not followed, and what is no file may never take the
/// bytes.
std::error_code objection(const std::filesystem::path& path) {
    using std::filesystem::file_type;
    std::error_code error;
    switch (std::filesystem::symlink_status(path, error).type()) {
        case file_type::none:
            return error;
        case file_type::not_found:
        case file_type::regular:
            return {};
        case file_type::symlink:
            return make_error_code(std::errc::too_many_symbolic_link_levels);
        case file_type::directory:
            return make_error_code(std::errc::is_a_directory);
        default:
            return make_error_code(std::errc::operation_not_supported);
    }
}

/// Replaces the file's contents; no error when all bytes were written.
std::error_code writeFile(const std::filesystem::path& path, std::string_view bytes) {
    if (const auto error = objection(path)) {
        return error;
    }
    errno = 0;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return file ? std::error_code() : lastStreamError();
}

bool writePicture(const std::filesystem::path& directory, const Picture& picture) {
    const auto png = pngData(darkStrip(picture.image), darkStripScale);
    return png && !writeFile(directory / picture.fileName, *png);
}

}  // namespace

std::int32_t run(const std::string& directory, StandardOutput& output) {
    const std::filesystem::path path(directory);
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error) {
        output.line(fmt::format("cannot create {}: {}", directory, error.message()));
        return 1;
    }
    error = writeFile(path / "glyphs.json", glyphDocument());
    if (error) {
        output.line(fmt::format("cannot write glyphs.json: {}", error.message()));
        return 1;
    }
    const auto all = pictures();
    const auto written =
        std::count_if(all.begin(), all.end(), [&](const auto& picture) { return writePicture(path, picture); });
    output.line(fmt::format("wrote glyphs.json and {} PNGs to {}", written, directory));
    return 0;
}

}  // namespace thermopix::WebAssetExport
