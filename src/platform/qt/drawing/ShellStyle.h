#pragma once

#include <QProxyStyle>

namespace thermopix {

/// The look of what the toolkit draws itself: menus and scroll bars. The desktop's palette gives the colours.
class ShellStyle final : public QProxyStyle {
public:
    ShellStyle();

    /// The property of a menu action that says its text style, one of the names below.
    static constexpr const char* lineProperty = "line";
    /// The property of a menu action that names its symbol.
    static constexpr const char* symbolProperty = "symbol";

    enum MenuLine { standardLine, headlineLine, captionLine, sectionLine };

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                         const QWidget* widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                       const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* data) const override;

    /// The font of a line of a menu whose other lines are in `font`.
    [[nodiscard]] static QFont lineFont(MenuLine line, const QFont& font);
};

}  // namespace thermopix
