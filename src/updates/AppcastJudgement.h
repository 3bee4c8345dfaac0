#pragma once

#include <string>

#include "updates/Appcast.h"
#include "updates/UpdateVerdict.h"

namespace thermopix {

/// The program that asks for something newer than itself.
struct InstalledProgram {
    std::string version;
    std::string build;
    /// As feeds name it ("linux"), in lower case.
    std::string system;
    std::string systemVersion;
};

/// The newest release of the feed that runs on the program's system and was meant for everyone, if it is newer than
/// the program. Versions are compared as people read them, because each packager counts builds for himself; only a
/// critical release's bound is a build number where its own version is.
[[nodiscard]] UpdateVerdict judgeAppcast(const Appcast& appcast, const InstalledProgram& program);

}  // namespace thermopix
