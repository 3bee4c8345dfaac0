#include "platform/linux/tray/TrayPictureCache.h"

#include <algorithm>
#include <utility>

namespace thermopix {
namespace {

GVariantHandle marshalled(const std::vector<TrayPicture>& pictures) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("a(iiay)"));
    for (const auto& picture : pictures) {
        g_variant_builder_add(
            &builder, "(ii@ay)", picture.width, picture.height,
            g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, picture.argb.data(), picture.argb.size(), 1));
    }
    GVariantHandle value(g_variant_ref_sink(g_variant_builder_end(&builder)));
    // Serializes in place, once for all its readers.
    static_cast<void>(g_variant_get_data(value.get()));
    return value;
}

}  // namespace

GVariantHandle TrayPictureCache::pictures(const StatusImage& art, TrayPictureSet set, const TrayInk& ink) {
    const auto known = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.set == set && entry.ink == ink && entry.art == art;
    });
    if (known != entries_.end()) {
        entries_.splice(entries_.begin(), entries_, known);
    } else {
        entries_.push_front({art, set, ink, marshalled(trayPictures(art, set, ink))});
        if (entries_.size() > capacity) {
            entries_.pop_back();
        }
    }
    return GVariantHandle(g_variant_ref(entries_.front().pictures.get()));
}

}  // namespace thermopix
