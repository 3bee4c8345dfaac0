#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace thermopix {

[[nodiscard]] inline QString qtString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The text as a control's label, in which an ampersand would otherwise mark a key.
[[nodiscard]] inline QString withoutMnemonics(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

[[nodiscard]] inline QString controlText(std::string_view text) {
    return withoutMnemonics(qtString(text));
}

}  // namespace thermopix
