#include "platform/macos/menubar/AttributedText.h"

#include "platform/macos/system/Text.h"

namespace thermopix {

NSAttributedString* attributedText(std::string_view text, const AttributedTextStyle& style) {
    NSMutableParagraphStyle* paragraph = [[NSMutableParagraphStyle alloc] init];
    paragraph.lineSpacing = style.lineSpacing;
    paragraph.alignment = style.isCentered ? NSTextAlignmentCenter : NSTextAlignmentNatural;
    return [[NSAttributedString alloc] initWithString:nsString(text)
                                           attributes:@{
                                               NSFontAttributeName : style.font,
                                               NSForegroundColorAttributeName : style.color,
                                               NSKernAttributeName : @(style.letterSpacing),
                                               NSParagraphStyleAttributeName : paragraph,
                                           }];
}

}  // namespace thermopix
