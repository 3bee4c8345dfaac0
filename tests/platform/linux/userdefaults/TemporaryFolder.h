#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace thermopix {

/// An empty folder that goes away with the test.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = testing::TempDir() + "thermopix-XXXXXX";
        EXPECT_NE(mkdtemp(pattern.data()), nullptr);
        root_ = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    [[nodiscard]] std::string path(std::string_view name = {}) const {
        return name.empty() ? root_.native() : (root_ / name).native();
    }

    /// The names in a folder, sorted; empty where there is no folder.
    [[nodiscard]] std::vector<std::string> entries(std::string_view folder = {}) const {
        std::vector<std::string> names;
        std::error_code ignored;
        for (const auto& entry : std::filesystem::directory_iterator(path(folder), ignored)) {
            names.push_back(entry.path().filename().native());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    void write(std::string_view name, std::string_view bytes) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream(path(name), std::ios::binary) << bytes;
    }

    [[nodiscard]] std::string read(std::string_view name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path root_;
};

}  // namespace thermopix
