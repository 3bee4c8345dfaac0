#include "platform/macos/drawing/AttributedText.h"

#include "platform/macos/system/Text.h"

namespace thermopix {

NSAttributedString* attributedText(std::string_view text, const AttributedTextStyle& style) {
    NSMutableParagraphStyle* paragraph = [[NSMutableParagraphStyle alloc] init];
    paragraph.lineSpacing = style.lineSpacing;
    paragraph.alignment = style.isCentered ? NSTextAlignmentCenter : NSTextAlignmentNatural;
    NSMutableDictionary<NSAttributedStringKey, id>* attributes = [[NSMutableDictionary alloc] init];
    [attributes setObject:style.font forKey:NSFontAttributeName];
    [attributes setObject:style.color forKey:NSForegroundColorAttributeName];
    [attributes setObject:paragraph forKey:NSParagraphStyleAttributeName];
    // No spacing at all would switch off the font's own kerning too.
    if (style.letterSpacing != 0) {
        [attributes setObject:@(style.letterSpacing) forKey:NSKernAttributeName];
    }
    return [[NSAttributedString alloc] initWithString:nsString(text) attributes:attributes];
}

}  // namespace thermopix
