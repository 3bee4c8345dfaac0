#pragma once

#include <QProxyStyle>

namespace thermopix {

/// The look of what the toolkit draws itself: menus and upright scroll bars. The desktop's palette gives the colours.
class ShellStyle final : public QProxyStyle {
public:
    ShellStyle();

    /// The property of a menu action that says its `ColorRole` where that is not the one of all that can be chosen.
    static constexpr const char* colorProperty = "color";
    /// The property of a menu action that names its symbol.
    static constexpr const char* symbolProperty = "symbol";

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
};

}  // namespace thermopix
