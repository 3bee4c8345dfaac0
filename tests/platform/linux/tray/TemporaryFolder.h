#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace thermopix {

/// A folder of a test, removed with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "thermopix-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    void write(const std::filesystem::path& file, std::string_view text) const {
        std::filesystem::create_directories((path_ / file).parent_path());
        std::ofstream(path_ / file) << text;
    }

private:
    std::filesystem::path path_;
};

}  // namespace thermopix
