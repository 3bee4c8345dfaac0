#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "base/Fatal.h"
#include "fakes/ManualMainLoop.h"
#include "updates/UpdateCheck.h"

using namespace thermopix;

namespace {

/// Lists every line of a text as an installed package, and again as one with an update.
class LinesAsPackages final : public PackageService {
public:
    LinesAsPackages(std::string_view text, MainLoop& mainLoop) : text_(text), mainLoop_(mainLoop) {}

    Subscription listInstalled(const std::string& /*name*/, Visit visit, Ended ended) override {
        return list(1, std::move(visit), std::move(ended));
    }
    Subscription listUpdates(Visit visit, Ended ended) override { return list(5, std::move(visit), std::move(ended)); }
    Subscription readAge(std::function<void(std::optional<std::chrono::seconds>)> told) override {
        return mainLoop_.post([told = std::move(told)] { told(std::nullopt); });
    }

private:
    Subscription list(std::uint32_t info, Visit visit, Ended ended) {
        return mainLoop_.post([this, info, visit = std::move(visit), ended = std::move(ended)] {
            for (auto rest = text_; !rest.empty();) {
                const auto line = rest.substr(0, rest.find('\n'));
                visit({info, line});
                rest.remove_prefix(std::min(line.size() + 1, rest.size()));
            }
            ended(Outcome::complete);
        });
    }

    std::string_view text_;
    MainLoop& mainLoop_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ManualMainLoop loop;
    LinesAsPackages packages({reinterpret_cast<const char*>(data), size}, loop);
    UpdateCheck check(packages, loop, "thermopix");
    int verdicts = 0;
    check.start([&verdicts](const UpdateVerdict& verdict) {
        ++verdicts;
        if (const auto* update = std::get_if<UpdateAvailable>(&verdict)) {
            require(!update->version.empty() && update->version.size() <= 100, "a version is short");
            require(std::all_of(update->version.begin(), update->version.end(),
                                [](char character) { return character > ' ' && character <= '~'; }),
                    "a version can be shown");
        }
    });
    loop.advance(std::chrono::minutes(1));
    require(verdicts == 1, "a check has one verdict");
    return 0;
}
