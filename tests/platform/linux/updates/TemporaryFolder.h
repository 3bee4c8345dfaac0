#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace thermopix {

/// A folder of its own for a test, gone with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "thermopix-updates-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        path = pattern;
    }
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(path, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path write(const std::filesystem::path& name, std::string_view content) const {
        std::filesystem::create_directories((path / name).parent_path());
        std::ofstream(path / name) << content;
        return path / name;
    }

    /// A program for the shell.
    std::filesystem::path script(const std::filesystem::path& name, const std::string& commands) const {
        auto file = write(name, "#!/bin/sh\n" + commands + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        return file;
    }

    std::filesystem::path path;
};

}  // namespace thermopix
