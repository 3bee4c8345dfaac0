#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace thermopix {

/// An empty directory of its own, removed with everything in it.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string name = testing::TempDir() + "thermopix-XXXXXX";
        path = mkdtemp(name.data()) == nullptr ? "" : name;
        EXPECT_FALSE(path.empty());
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::filesystem::path path;
};

}  // namespace thermopix
