#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include "fakes/TestFiles.h"

namespace thermopix {

/// Expects a text to equal the file of this name in the folder of golden texts. With THERMOPIX_UPDATE_GOLDEN=1 in the
/// environment the file is rewritten instead; read the difference before you commit it.
inline void expectGolden(const std::string& name, const std::string& text) {
    const auto path = testFile("diagnostics/golden") / name;
    const char* update = std::getenv("THERMOPIX_UPDATE_GOLDEN");
    if (update != nullptr && std::string_view(update) == "1") {
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file << text;
        file.close();
        EXPECT_TRUE(file) << "cannot write " << path;
        return;
    }
    std::ifstream file(path, std::ios::binary);
    ASSERT_TRUE(file) << "there is no golden text " << path << "; the text was:\n" << text;
    std::ostringstream golden;
    golden << file.rdbuf();
    EXPECT_EQ(golden.str(), text) << "golden text " << name;
}

}  // namespace thermopix
