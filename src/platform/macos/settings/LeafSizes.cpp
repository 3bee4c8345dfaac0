#include "platform/macos/settings/LeafSizes.h"

#include <fmt/format.h>

#include <cstddef>

namespace thermopix {

namespace {

constexpr std::size_t mostSizes = 512;

// Everything that a leaf's size depends on; lengths keep one text from running into the next.
std::string keyOf(const ViewNode& leaf, double width) {
    const TextStyle& style = leaf.textStyle;
    std::string key = fmt::format("{} {} {} {} {} {} {} {} {}:{}", static_cast<int>(leaf.kind), style.points,
                                  style.isSemibold, style.letterSpacing, style.lineSpacing, leaf.wraps ? width : -1,
                                  static_cast<int>(leaf.pickerStyle), leaf.hidesLabel, leaf.text.size(), leaf.text);
    for (const PickerItem& item : leaf.items) {
        key += fmt::format(" {}:{}", item.title.size(), item.title);
    }
    return key;
}

}  // namespace

Size LeafSizes::size(const ViewNode& leaf, double width, MeasureLeaf measure) {
    std::string key = keyOf(leaf, width);
    if (const auto known = sizes_.find(key); known != sizes_.end()) {
        return known->second;
    }
    if (sizes_.size() >= mostSizes) {
        sizes_.clear();
    }
    return sizes_.emplace(std::move(key), measure(leaf, width)).first->second;
}

}  // namespace thermopix
