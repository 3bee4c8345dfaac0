#pragma once

#import <AppKit/AppKit.h>

#include <string_view>

NS_ASSUME_NONNULL_BEGIN

namespace thermopix {

/// How a text is set. Spacings are in points, on top of the font's own.
struct AttributedTextStyle {
    NSFont* font;
    NSColor* color;
    double letterSpacing = 0;
    double lineSpacing = 0;
    bool isCentered = false;
};

[[nodiscard]] NSAttributedString* attributedText(std::string_view text, const AttributedTextStyle& style);

}  // namespace thermopix

NS_ASSUME_NONNULL_END
