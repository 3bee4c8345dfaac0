#include "menubar/StatusItemController.h"

#include <tuple>
#include <utility>

#include "pixels/PixelRasterizer.h"
#include "pixels/StatusImageRenderer.h"

namespace thermopix {

StatusItemController::StatusItemController(AppEnvironment& environment, StatusBar& statusBar,
                                           StatusMenuController::Actions actions)
    : environment_(environment),
      menuController_(environment, std::move(actions)),
      statusItem_(statusBar.makeStatusItem()),
      blinking_(environment.mainLoop(), [this] { redraw(); }) {
    statusItem_->setMenu(menuController_);
    observePreferences();
    startTicking();
    startBlinking();
}

StatusItemController::~StatusItemController() {
    auto& scheduler = environment_.scheduler();
    scheduler.onTick = scheduler.onWake = scheduler.onSleep = nullptr;
}

void StatusItemController::refresh() {
    lastDrawn_ = environment_.currentDisplay();
    redraw();
}

template <typename Projection>
void StatusItemController::onChange(Projection project, std::function<void()> work) {
    auto handler = [this, work = std::move(work), isFirst = true,
                    posted = std::make_shared<Subscription>()](const auto& /*value*/) mutable {
        if (!std::exchange(isFirst, false)) {
            *posted = environment_.mainLoop().post(work);
        }
    };
    subscriptions_.push_back(environment_.store().subscribeDistinct(project, std::move(handler)));
}

void StatusItemController::observePreferences() {
    onChange(
        [](const Preferences& preferences) {
            return std::tuple(preferences.unit, preferences.style, preferences.size, preferences.source,
                              preferences.showsUnitLetter);
        },
        [this] { refresh(); });
    onChange([](const Preferences& preferences) { return preferences.pet; }, [this] { startBlinking(); });
    onChange([](const Preferences& preferences) { return preferences.refreshInterval; },
             [this] { environment_.scheduler().setInterval(environment_.preferences().refreshInterval); });
}

void StatusItemController::startTicking() {
    auto& scheduler = environment_.scheduler();
    scheduler.onTick = [this] { refresh(); };
    scheduler.onWake = [this] {
        environment_.monitor().reset();
        lastDrawn_.reset();
        lastRendered_.reset();
        startBlinking();
    };
    // Nobody sees a pet blink on a dark display.
    scheduler.onSleep = [this] { blinking_.stop(); };
    environment_.onLateReading = [this] {
        if (!environment_.scheduler().isAsleep()) {
            refresh();
        }
    };
    scheduler.start(environment_.preferences().refreshInterval);
}

void StatusItemController::startBlinking() {
    if (environment_.preferences().pet == PixelPet::none) {
        blinking_.stop();
        redraw();
    } else if (!environment_.scheduler().isAsleep()) {
        blinking_.start();
    }
}

void StatusItemController::redraw() {
    if (!lastDrawn_) {
        return;
    }
    const Appearance appearance = environment_.preferences().appearance(blinking_.areEyesClosed());
    const auto& origin = environment_.monitor().origin();
    if (lastRendered_ == lastDrawn_ && lastAppearance_ == appearance && lastOrigin_ == origin) {
        return;
    }
    lastRendered_ = lastDrawn_;
    lastAppearance_ = appearance;
    lastOrigin_ = origin;
    const Display& display = *lastRendered_;
    if (statusItem_->hasButton()) {
        statusItem_->setImage({StatusImageRenderer::image(display, appearance), PixelRasterizer::digitsBitmap(display),
                               origin ? fallbackNote(*origin) : std::string()});
    }
    menuController_.update(display);
}

}  // namespace thermopix
