#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
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

    [[nodiscard]] const std::filesystem::path& path() const { return root_; }
    [[nodiscard]] std::filesystem::path path(std::string_view name) const { return root_ / name; }

    /// The names in a folder, sorted; empty where there is no folder.
    [[nodiscard]] std::vector<std::string> entries(const std::filesystem::path& folder = {}) const {
        std::vector<std::string> names;
        std::error_code ignored;
        for (const auto& entry : std::filesystem::directory_iterator(root_ / folder, ignored)) {
            names.push_back(entry.path().filename().native());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    /// The path of the file, made with the folders that it lies in.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view bytes) const {
        std::filesystem::path file = root_ / name;
        makeFolder(name.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }

    void makeFolder(const std::filesystem::path& name) const { std::filesystem::create_directories(root_ / name); }

    /// A link to a target that counts from the link's folder, which is made.
    void link(const std::filesystem::path& name, const std::filesystem::path& target) const {
        makeFolder(name.parent_path());
        std::filesystem::create_symlink(target, root_ / name);
    }

    /// A program for the shell.
    std::filesystem::path script(const std::filesystem::path& name, const std::string& commands) const {
        auto file = write(name, "#!/bin/sh\n" + commands + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        return file;
    }

    [[nodiscard]] std::string read(const std::filesystem::path& name) const {
        std::ifstream file(root_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path root_;
};

}  // namespace thermopix
