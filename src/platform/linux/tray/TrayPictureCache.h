#pragma once

#include <cstddef>
#include <list>

#include "platform/linux/glib/GLibHandles.h"
#include "tray/TrayPictures.h"

namespace thermopix {

/// Keeps the latest pictures in the form that the bus carries, so that a blinking pet costs no drawing.
class TrayPictureCache {
public:
    static constexpr std::size_t capacity = 4;

    /// The pictures as a(iiay): the same object for the same question, while it is among the latest few.
    [[nodiscard]] GVariantHandle pictures(const StatusImage& art, TrayPictureSet set, const TrayInk& ink);

private:
    struct Entry {
        StatusImage art;
        TrayPictureSet set;
        TrayInk ink;
        GVariantHandle pictures;
    };

    /// The latest first.
    std::list<Entry> entries_;
};

}  // namespace thermopix
