#include "platform/linux/windows/StripStatusBar.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>
#include <variant>

namespace thermopix {

namespace {

constexpr std::chrono::minutes longLife{1};

class StripStatusItem final : public StatusItem {
public:
    StripStatusItem(WindowClient& client, MainLoop& mainLoop, std::shared_ptr<UserDefaults> defaults)
        : client_(client),
          mainLoop_(mainLoop),
          defaults_(std::move(defaults)),
          start_(client.onStart([this] { processStarted(); })),
          events_(client.onEvent([this](const WindowEvent& event) { handle(event); })),
          end_(client.onEnd([this](const WindowProcessEnd& /*end*/) { comeBack(); })) {}
    ~StripStatusItem() override {
        // Its process ends with it.
        end_.cancel();
        client_.send(HideStrip{});
    }
    StripStatusItem(const StripStatusItem&) = delete;
    StripStatusItem& operator=(const StripStatusItem&) = delete;

    [[nodiscard]] bool hasButton() const override { return true; }

    void setImage(const StatusItemImage& image) override {
        if (readout_ && readout_->image == image.readout) {
            return;
        }
        const bool isFirst = !readout_;
        readout_ = SetStripReadout{image.readout, image.note};
        if (isFirst) {
            show();
        } else {
            client_.send(*readout_);
        }
    }

    void setMenu(MenuSource& menu) override {
        menu_ = &menu;
        changes_ = menu.observe([this](const Menu& state) { client_.send(SetStripMenu{state}); });
    }

private:
    void show() {
        client_.send(*readout_);
        const auto stored = defaults_->data(StripStatusBar::positionKey);
        client_.send(ShowStrip{stored ? stripPosition(*stored) : std::nullopt});
    }

    void processStarted() {
        startedAt_ = mainLoop_.now();
        client_.send(*readout_);
        if (menu_ != nullptr) {
            // The first delivery is the menu as it is.
            auto& menu = *menu_;
            setMenu(menu);
        }
    }

    void handle(const WindowEvent& event) {
        if (const auto* opening = std::get_if<MenuWillOpen>(&event);
            opening != nullptr && opening->place == MenuPlace::strip && menu_ != nullptr) {
            menu_->menuWillOpen();
        } else if (const auto* chosen = std::get_if<MenuItemChosen>(&event);
                   chosen != nullptr && chosen->place == MenuPlace::strip && menu_ != nullptr) {
            menu_->perform(chosen->item);
        } else if (const auto* moved = std::get_if<StripMoved>(&event)) {
            defaults_->setData(StripStatusBar::positionKey, stripPositionText(moved->position));
        }
    }

    void comeBack() {
        if (startedAt_ && mainLoop_.now() - *startedAt_ >= longLife) {
            pause_ = StripStatusBar::firstPause;
        }
        startedAt_.reset();
        comingBack_ = mainLoop_.oneShot(pause_, [this] { show(); });
        pause_ = std::min(pause_ * 2, StripStatusBar::longestPause);
    }

    WindowClient& client_;
    MainLoop& mainLoop_;
    std::shared_ptr<UserDefaults> defaults_;
    /// Nothing is shown before there is a picture.
    std::optional<SetStripReadout> readout_;
    MenuSource* menu_ = nullptr;
    std::optional<MainLoop::Duration> startedAt_;
    std::chrono::seconds pause_ = StripStatusBar::firstPause;
    Subscription comingBack_;
    Subscription start_;
    Subscription events_;
    Subscription end_;
    Subscription changes_;
};

}  // namespace

StripStatusBar::StripStatusBar(WindowClient& client, MainLoop& mainLoop, std::shared_ptr<UserDefaults> defaults)
    : client_(client), mainLoop_(mainLoop), defaults_(std::move(defaults)) {
    // The database reads a key from its disk once; later nobody has time to wait for that.
    static_cast<void>(defaults_->data(positionKey));
}

std::unique_ptr<StatusItem> StripStatusBar::makeStatusItem() {
    return std::make_unique<StripStatusItem>(client_, mainLoop_, defaults_);
}

std::optional<ScreenPoint> stripPosition(std::string_view text) {
    const auto read = [](std::string_view number, std::int32_t& value) {
        const char* const end = number.data() + number.size();
        const auto [stop, error] = std::from_chars(number.data(), end, value);
        return error == std::errc() && stop == end;
    };
    const auto space = text.find(' ');
    ScreenPoint position;
    if (space == std::string_view::npos || !read(text.substr(0, space), position.x) ||
        !read(text.substr(space + 1), position.y)) {
        return std::nullopt;
    }
    return position;
}

std::string stripPositionText(ScreenPoint position) {
    return fmt::format("{} {}", position.x, position.y);
}

}  // namespace thermopix
