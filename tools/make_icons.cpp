#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "pixels/ApplicationIcon.h"
#include "pixels/PngWriter.h"

namespace {

bool write(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    return !out.fail();
}

bool writeIcons(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    for (const auto side : thermopix::applicationIconSides) {
        const auto png = thermopix::pngData(thermopix::applicationIcon(side), 1);
        if (!png || !write(folder / fmt::format("{}.png", side), *png)) {
            return false;
        }
    }
    return write(folder / "scalable.svg", thermopix::applicationIconSvg());
}

}  // namespace

/// make_icons FOLDER: writes the program's icon as FOLDER/<side>.png and FOLDER/scalable.svg.
int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::fputs("usage: make_icons FOLDER\n", stderr);
        return EXIT_FAILURE;
    }
    if (!writeIcons(arguments[1])) {
        std::fprintf(stderr, "make_icons: cannot write into %s\n", arguments[1]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
