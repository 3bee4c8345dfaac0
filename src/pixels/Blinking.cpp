#include "pixels/Blinking.h"

#include <utility>

namespace thermopix {

Blinking::Blinking(MainLoop& mainLoop, std::function<void()> onChange)
    : mainLoop_(mainLoop), onChange_(std::move(onChange)) {}

void Blinking::start() {
    // Eyes that are closed are still announced to open.
    areEyesClosed_ = false;
    closing_ = mainLoop_.repeating(period, period, leeway, [this] {
        opening_ = mainLoop_.oneShot(closed, [this] { setEyesClosed(false); });
        setEyesClosed(true);
    });
}

void Blinking::stop() {
    areEyesClosed_ = false;
    closing_.cancel();
    opening_.cancel();
}

void Blinking::setEyesClosed(bool areClosed) {
    areEyesClosed_ = areClosed;
    onChange_();
}

}  // namespace thermopix
