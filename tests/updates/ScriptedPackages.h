#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "updates/PackageService.h"

namespace thermopix {

/// A package service that answers when the test says so; it records what it is asked.
class ScriptedPackages final : public PackageService {
public:
    struct Package {
        std::uint32_t info;
        std::string identifier;
    };
    using Packages = std::vector<Package>;
    using Age = std::optional<std::chrono::seconds>;

    Subscription listInstalled(const std::string& name, Visit visit, Ended ended) override {
        return ask("installed " + name, std::move(visit), std::move(ended));
    }
    Subscription listUpdates(Visit visit, Ended ended) override {
        return ask("updates", std::move(visit), std::move(ended));
    }
    Subscription readAge(std::function<void(Age)> told) override {
        told_ = std::move(told);
        return ask("age", nullptr, nullptr);
    }

    void answer(const Packages& packages, Outcome outcome = Outcome::complete) {
        ASSERT_TRUE(isAsked);
        const auto visit = visit_;
        const auto ended = ended_;
        for (const auto& package : packages) {
            visit({package.info, package.identifier});
        }
        ended(outcome);
    }
    void tellAge(Age age) {
        ASSERT_TRUE(isAsked);
        const auto told = told_;
        told(age);
    }

    /// All questions of a check.
    void sayUpToDate() {
        answer({{1, "thermopix;1.2;amd64;installed"}});
        answer({});
        tellAge(std::chrono::hours(5));
    }
    void offer(const std::string& version) {
        answer({{1, "thermopix;1.2;amd64;installed"}});
        answer({{5, "thermopix;" + version + ";amd64;main"}});
    }

    std::vector<std::string> questions;
    bool isAsked = false;

private:
    Subscription ask(std::string question, Visit visit, Ended ended) {
        questions.push_back(std::move(question));
        visit_ = std::move(visit);
        ended_ = std::move(ended);
        isAsked = true;
        return Subscription([this, number = questions.size()] { isAsked = isAsked && number != questions.size(); });
    }

    Visit visit_;
    Ended ended_;
    std::function<void(Age)> told_;
};

}  // namespace thermopix
