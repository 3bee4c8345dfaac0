#include "shell/UnavailableWindows.h"

#include <string>
#include <utility>

namespace thermopix {

namespace {

class UnavailableWindow final : public Window {
public:
    UnavailableWindow(std::string title, DiagnosticLog& log) : title_(std::move(title)), log_(log) {}

    void show() override { log_.diag("desktop", "no window can be shown here: " + title_); }
    void makeKeyAndOrderFront() override {}
    [[nodiscard]] bool isVisible() const override { return false; }
    [[nodiscard]] bool isMiniaturized() const override { return false; }
    void setContent(const ViewNode& /*root*/) override {}

private:
    std::string title_;
    DiagnosticLog& log_;
};

}  // namespace

std::unique_ptr<Window> UnavailableWindows::makeWindow(const WindowDescription& description) {
    return std::make_unique<UnavailableWindow>(description.title, log_);
}

}  // namespace thermopix
