#pragma once

#include <memory>
#include <string>

#include "pixels/StatusImage.h"
#include "shell/Menu.h"

namespace thermopix {

/// The readout in the two shapes that status bars leave room for.
struct StatusItemImage {
    /// The whole readout, with its spoken description.
    StatusImage readout;
    /// The digits alone, for bars that give every item a square.
    PixelBitmap digits;
    /// What else is to be known of the reading, for those who ask by pointing at it; empty for nothing.
    std::string note{};

    friend bool operator==(const StatusItemImage&, const StatusItemImage&) = default;
};

/// One item of the status bar, of variable length; gone when destroyed. Main thread.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    /// False when the bar could not provide a place for a picture; then only the menu works.
    [[nodiscard]] virtual bool hasButton() const = 0;

    /// Replaces the picture and what is said of it; the item shows nothing else.
    virtual void setImage(const StatusItemImage& image) = 0;

    /// A click opens this menu. The source outlives the item.
    virtual void setMenu(MenuSource& menu) = 0;
};

class StatusBar {
public:
    virtual ~StatusBar() = default;
    [[nodiscard]] virtual std::unique_ptr<StatusItem> makeStatusItem() = 0;
};

}  // namespace thermopix
