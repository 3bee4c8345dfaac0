#include "updates/UpdateCheck.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>

namespace thermopix {

namespace {

/// Opening the lists of packages alone takes a slow machine seconds.
constexpr MainLoop::Duration patience = std::chrono::minutes(1);

constexpr std::size_t longestVersion = 100;

// The service's numbers for kinds of packages.
constexpr std::uint32_t installedKind = 1;
/// From a plain new version to one that closes a hole, and one that is critical. Updates that the system cannot
/// install are among the others.
constexpr std::array<std::uint32_t, 8> updateKinds{2, 3, 4, 5, 6, 7, 8, 26};

std::uint32_t kindOf(const ListedPackage& listed) {
    return listed.info & 0xFFFFU;
}

bool isUpdate(const ListedPackage& listed) {
    return std::find(updateKinds.begin(), updateKinds.end(), kindOf(listed)) != updateKinds.end();
}

bool isVersion(std::string_view text) {
    return !text.empty() && text.size() <= longestVersion &&
           std::all_of(text.begin(), text.end(), [](char character) { return character > ' ' && character <= '~'; });
}

std::string_view takeField(std::string_view& fields) {
    const auto field = fields.substr(0, fields.find(';'));
    fields.remove_prefix(std::min(field.size() + 1, fields.size()));
    return field;
}

}  // namespace

void UpdateCheck::start(Concluded concluded) {
    concluded_ = std::move(concluded);
    installed_.reset();
    update_.reset();
    limit_ = mainLoop_.oneShot(patience, [this] { conclude(CheckFailed{"the package service gave no answer"}); });
    step_ = service_.listInstalled(
        package_,
        [this](const ListedPackage& listed) {
            if (!installed_ && kindOf(listed) == installedKind) {
                installed_ = ownPackage(listed);
            }
        },
        [this](PackageService::Outcome outcome) { askForUpdates(outcome); });
}

void UpdateCheck::cancel() {
    concluded_ = nullptr;
    step_.cancel();
    limit_.cancel();
}

std::optional<UpdateCheck::OwnPackage> UpdateCheck::ownPackage(const ListedPackage& listed) const {
    auto fields = listed.identifier;
    const auto name = takeField(fields);
    const auto version = takeField(fields);
    const auto architecture = takeField(fields);
    if (name != package_ || !isVersion(version)) {
        return std::nullopt;
    }
    return OwnPackage{std::string(version), std::string(architecture)};
}

void UpdateCheck::askForUpdates(PackageService::Outcome outcome) {
    if (outcome == PackageService::Outcome::noService) {
        conclude(NotKnownHere{UpdateOrigin::package});
    } else if (outcome == PackageService::Outcome::failed) {
        conclude(CheckFailed{"the package service cannot say what is installed"});
    } else if (!installed_) {
        conclude(NotKnownHere{UpdateOrigin::elsewhere});
    } else {
        step_ = service_.listUpdates(
            [this](const ListedPackage& listed) {
                const auto update = isUpdate(listed) ? ownPackage(listed) : std::nullopt;
                if (!update_ && update && update->architecture == installed_->architecture) {
                    update_ = update;
                }
            },
            [this](PackageService::Outcome ended) { askForAge(ended); });
    }
}

void UpdateCheck::askForAge(PackageService::Outcome outcome) {
    if (outcome != PackageService::Outcome::complete) {
        conclude(CheckFailed{"the package service cannot say what is new"});
    } else if (update_) {
        conclude(UpdateAvailable{update_->version, installed_->version});
    } else {
        step_ = service_.readAge([this](std::optional<std::chrono::seconds> age) {
            conclude(UpToDate{installed_->version, age});
        });
    }
}

void UpdateCheck::conclude(const UpdateVerdict& verdict) {
    const auto concluded = std::exchange(concluded_, nullptr);
    cancel();
    concluded(verdict);
}

}  // namespace thermopix
