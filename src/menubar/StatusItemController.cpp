#include "menubar/StatusItemController.h"

#include <tuple>
#include <utility>

#include "pixels/BlinkRhythm.h"
#include "pixels/PixelRasterizer.h"
#include "pixels/StatusImageRenderer.h"

namespace thermopix {

StatusItemController::StatusItemController(AppEnvironment& environment, StatusBar& statusBar,
                                           StatusMenuController::Actions actions)
    : environment_(environment),
      menuController_(environment, std::move(actions)),
      statusItem_(statusBar.makeStatusItem()) {
    statusItem_->setMenu(menuController_);
    observePreferences();
    startTicking();
    startBlinking();
}

StatusItemController::~StatusItemController() = default;

void StatusItemController::refresh() {
    lastDrawn_ = environment_.currentDisplay();
    redraw();
}

template <typename Projection, typename Work>
void StatusItemController::onChange(Projection project, Work work) {
    auto handler = [this, work, isFirst = true](const auto& value) mutable {
        if (std::exchange(isFirst, false)) {
            return;
        }
        environment_.mainLoop().post([work, value, alive = std::weak_ptr(alive_)] {
            if (!alive.expired()) {
                work(value);
            }
        });
    };
    subscriptions_.push_back(environment_.store().subscribeDistinct(project, std::move(handler)));
}

void StatusItemController::observePreferences() {
    onChange(
        [](const Preferences& preferences) {
            return std::tuple(preferences.unit, preferences.style, preferences.size, preferences.source,
                              preferences.showsUnitLetter);
        },
        [this](const auto&) { refresh(); });
    onChange([](const Preferences& preferences) { return preferences.pet; }, [this](PixelPet) { startBlinking(); });
    onChange([](const Preferences& preferences) { return preferences.refreshInterval; },
             [this](RefreshInterval interval) { environment_.scheduler().setInterval(interval); });
}

void StatusItemController::startTicking() {
    auto& scheduler = environment_.scheduler();
    scheduler.onTick = [this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) {
            refresh();
        }
    };
    scheduler.onWake = [this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) {
            environment_.monitor().reset();
            lastDrawn_.reset();
            lastRendered_.reset();
            startBlinking();
        }
    };
    scheduler.onSleep = [this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) {
            // Nobody sees a pet blink on a dark display.
            blinkTimer_.cancel();
            eyesOpenTimer_.cancel();
            isBlinking_ = false;
        }
    };
    scheduler.start(environment_.preferences().refreshInterval);
}

void StatusItemController::startBlinking() {
    blinkTimer_.cancel();
    isBlinking_ = false;
    if (environment_.preferences().pet == PixelPet::none) {
        redraw();
        return;
    }
    if (environment_.scheduler().isAsleep()) {
        return;
    }
    blinkTimer_ = environment_.mainLoop().repeating(BlinkRhythm::period, BlinkRhythm::period, BlinkRhythm::leeway,
                                                    [this] { blink(); });
}

void StatusItemController::blink() {
    isBlinking_ = true;
    redraw();
    eyesOpenTimer_ = environment_.mainLoop().oneShot(BlinkRhythm::closed, [this] {
        isBlinking_ = false;
        redraw();
    });
}

void StatusItemController::redraw() {
    if (!lastDrawn_) {
        return;
    }
    const auto& preferences = environment_.preferences();
    const Appearance appearance{preferences.style, preferences.size, preferences.pet, preferences.showsUnitLetter,
                                isBlinking_};
    if (lastRendered_ == lastDrawn_ && lastAppearance_ == appearance) {
        return;
    }
    lastRendered_ = lastDrawn_;
    lastAppearance_ = appearance;
    const Display& display = *lastRendered_;
    if (statusItem_->hasButton()) {
        statusItem_->setImage({StatusImageRenderer::image(display, appearance.style, appearance.size, appearance.pet,
                                                          appearance.showsUnitLetter, appearance.blinking),
                               PixelRasterizer::digitsBitmap(display)});
        statusItem_->setAccessibilityLabel(StatusImageRenderer::accessibilityDescription(display, appearance.pet));
    }
    menuController_.update(display);
}

}  // namespace thermopix
