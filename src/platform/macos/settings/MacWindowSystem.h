#pragma once

#include "shell/Window.h"
#include "system/MainLoop.h"

namespace thermopix {

class MacWindowSystem final : public WindowSystem {
public:
    /// `mainLoop` outlives the windows.
    explicit MacWindowSystem(MainLoop& mainLoop) : mainLoop_(mainLoop) {}

    [[nodiscard]] std::unique_ptr<Window> makeWindow(const WindowDescription& description) override;
    [[nodiscard]] double titleBarHeight() const override;

private:
    MainLoop& mainLoop_;
};

}  // namespace thermopix
