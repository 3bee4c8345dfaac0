#include "platform/linux/terminal/TerminalStatusBar.h"

#include <csignal>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/glib/GLibSignals.h"
#include "platform/linux/terminal/TerminalScreen.h"

namespace thermopix {

namespace {

bool isCapable(std::string_view terminalType) {
    return !terminalType.empty() && terminalType != "dumb";
}

/// A picture that stays where it was drawn first.
class PictureItem final : public StatusItem {
public:
    PictureItem(TerminalOutput& output, TerminalColor color) : output_(output), color_(color) {}

    [[nodiscard]] bool hasButton() const override { return true; }

    void setImage(const StatusItemImage& image) override {
        image_ = image.readout;
        redraw();
    }

    void setMenu(MenuSource& /*menu*/) override {}

private:
    void redraw() {
        if (!image_) {
            return;
        }
        const auto size = output_.size();
        const auto oldRows = TerminalScreen::rowsTaken(drawn_, size.columns);
        drawn_ = TerminalScreen::lines(*image_, size, color_);
        output_.write(TerminalScreen::redraw(oldRows, drawn_));
    }

    TerminalOutput& output_;
    TerminalColor color_;
    std::optional<StatusImage> image_;
    std::vector<std::string> drawn_;
    Subscription resizes_ = observeUnixSignal(SIGWINCH, [this] { redraw(); });
};

/// A line for each new description.
class LineItem final : public StatusItem {
public:
    explicit LineItem(TerminalOutput& output) : output_(output) {}

    [[nodiscard]] bool hasButton() const override { return true; }

    void setImage(const StatusItemImage& image) override {
        if (image.readout.description.value_or("") != said_) {
            said_ = *image.readout.description;
            output_.write(said_ + "\n");
        }
    }

    void setMenu(MenuSource& /*menu*/) override {}

private:
    TerminalOutput& output_;
    std::string said_;
};

}  // namespace

TerminalStatusBar::TerminalStatusBar(int descriptor, const EnvironmentVariables& variables,
                                     std::function<void()> outputLost)
    : output_(descriptor, std::move(outputLost)),
      drawsPictures_(output_.isTerminal() && isCapable(textOf(variables, "TERM"))),
      color_(textOf(variables, "NO_COLOR").empty() ? TerminalColor::allowed : TerminalColor::avoided) {}

std::unique_ptr<StatusItem> TerminalStatusBar::makeStatusItem() {
    if (drawsPictures_) {
        return std::make_unique<PictureItem>(output_, color_);
    }
    return std::make_unique<LineItem>(output_);
}

}  // namespace thermopix
