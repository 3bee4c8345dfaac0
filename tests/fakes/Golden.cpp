#include "fakes/Golden.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "fakes/TestFiles.h"

namespace thermopix {

void expectGolden(std::string_view path, const std::string& text) {
    const std::filesystem::path folder = THERMOPIX_SEEN_FOLDER;
    const auto seen = folder / path;
    std::ifstream file(testFile(path), std::ios::binary);
    const std::string golden = file ? std::string(std::istreambuf_iterator<char>(file), {}) : "no such file";
    if (golden == text) {
        std::filesystem::remove(seen);
        return;
    }
    std::filesystem::create_directories(seen.parent_path());
    std::ofstream(seen, std::ios::binary) << text;
    EXPECT_EQ(golden, text) << "tests/" << path << "\nTo approve all that was seen:  cp -r " << folder.string() << "/. "
                            << testFile("").string();
}

}  // namespace thermopix
