#include "environment/Preferences.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <nlohmann/json.hpp>
#include <sstream>
#include <tuple>
#include <type_traits>
#include <utility>

#include "base/Enumeration.h"
#include "system/StorageLimits.h"

namespace thermopix {

namespace {

template <typename Value>
struct Field {
    std::string_view key;
    Value Preferences::*member;
};
template <typename Value>
Field(std::string_view, Value Preferences::*) -> Field<Value>;

/// The document's members, in its order.
constexpr std::tuple fields{
    Field{"unit", &Preferences::unit},
    Field{"style", &Preferences::style},
    Field{"size", &Preferences::size},
    Field{"pet", &Preferences::pet},
    Field{"source", &Preferences::source},
    Field{"refreshInterval", &Preferences::refreshInterval},
    Field{"showsUnitLetter", &Preferences::showsUnitLetter},
    Field{"openAtLogin", &Preferences::openAtLogin},
    Field{"showPreferencesOnLaunch", &Preferences::showPreferencesOnLaunch},
    Field{"showInDock", &Preferences::showInDock},
    Field{"checkForUpdatesAutomatically", &Preferences::checkForUpdatesAutomatically},
};

struct AnyMember {
    template <typename Value>
    constexpr operator Value() const {  // NOLINT(google-explicit-constructor): it stands in for any member
        return Value{};
    }
};

template <typename Record, std::size_t... index>
constexpr bool hasMembers(std::index_sequence<index...> /*count*/) {
    return requires {
        Record{(static_cast<void>(index), AnyMember{})...};
    };
}

constexpr std::size_t fieldCount = std::tuple_size_v<decltype(fields)>;
static_assert(hasMembers<Preferences>(std::make_index_sequence<fieldCount>()) &&
                  !hasMembers<Preferences>(std::make_index_sequence<fieldCount + 1>()),
              "every member of the record has its row");

using Json = nlohmann::json;

template <typename Value>
nlohmann::ordered_json encoded(Value value) {
    if constexpr (std::is_same_v<Value, bool>) {
        return value;
    } else {
        return rawValue(value);
    }
}

std::optional<std::string_view> text(const Json& value) {
    return value.is_string() ? std::optional<std::string_view>(value.get_ref<const std::string&>()) : std::nullopt;
}

/// A number without a fraction, however it is written (2, 2.0, 2e0).
std::optional<std::int64_t> wholeNumber(const Json& value) {
    constexpr double limit = 9007199254740992.0;  // 2^53: beyond it, not every whole number is a double
    if (!value.is_number()) {
        return std::nullopt;
    }
    const auto number = value.get<double>();
    if (!(std::abs(number) < limit) || number != std::trunc(number)) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(number);
}

template <typename Value>
std::optional<Value> decoded(const Json& value) {
    if constexpr (std::is_same_v<Value, bool>) {
        return value.is_boolean() ? std::optional(value.get<bool>()) : std::nullopt;
    } else {
        std::optional<RawValue<Value>> raw;
        if constexpr (std::is_integral_v<RawValue<Value>>) {
            raw = wholeNumber(value);
        } else {
            raw = text(value);
        }
        return raw ? fromRawValue<Value>(*raw) : std::nullopt;
    }
}

template <typename Value>
void readField(const Json& document, const Field<Value>& field, Preferences& preferences) {
    if (const auto member = document.find(field.key); member != document.end()) {
        preferences.*field.member = decoded<Value>(*member).value_or(Preferences{}.*field.member);
    }
}

bool isBeyondDouble(const std::string& number) {
    std::istringstream stream(number);
    stream.imbue(std::locale::classic());
    double value = 0.0;
    stream >> value;
    return stream.fail() && stream.eof() && std::abs(value) == std::numeric_limits<double>::max();
}

/// The document with null for numbers beyond the range of double, which the parser would reject as a whole.
std::string withoutExcessiveNumbers(std::string_view document) {
    std::string result;
    bool isInText = false;
    for (std::size_t i = 0; i < document.size();) {
        const std::string_view rest = document.substr(i);
        std::size_t length = 1;
        if (isInText) {
            length = rest.front() == '\\' && rest.size() > 1 ? 2 : 1;
        } else if (rest.front() == '-' || (rest.front() >= '0' && rest.front() <= '9')) {
            length = std::min(rest.find_first_not_of("0123456789+-.eE"), rest.size());
        }
        if (length == 1 && rest.front() == '"') {
            isInText = !isInText;
        }
        const std::string token(rest.substr(0, length));
        result += !isInText && length > 1 && isBeyondDouble(token) ? "null" : token;
        i += length;
    }
    return result;
}

/// Whether brackets within brackets would cost more than any record is worth.
bool isNestedTooDeep(std::string_view document) {
    std::size_t depth = 0;
    bool isInText = false;
    for (std::size_t i = 0; i < document.size() && depth <= StorageLimits::deepestNesting; ++i) {
        const char character = document[i];
        if (character == '"') {
            isInText = !isInText;
        } else if (isInText) {
            i += character == '\\' ? 1 : 0;
        } else if (character == '[' || character == '{') {
            ++depth;
        } else if ((character == ']' || character == '}') && depth > 0) {
            --depth;
        }
    }
    return depth > StorageLimits::deepestNesting;
}

Json parsed(std::string_view document) {
    return Json::parse(document, nullptr, /*allow_exceptions=*/false);
}

}  // namespace

std::string encodePreferences(const Preferences& preferences) {
    nlohmann::ordered_json document = nlohmann::ordered_json::object();
    std::apply(
        [&](const auto&... field) { ((document[std::string(field.key)] = encoded(preferences.*field.member)), ...); },
        fields);
    return document.dump();
}

std::optional<Preferences> decodePreferences(std::string_view document) {
    Json content = parsed(document);
    if (content.is_discarded()) {
        content = parsed(withoutExcessiveNumbers(document));
    }
    if (!content.is_object()) {
        return std::nullopt;
    }
    Preferences preferences;
    std::apply([&](const auto&... field) { (readField(content, field, preferences), ...); }, fields);
    return preferences;
}

bool isPreferencesDocument(std::string_view document) {
    return !isNestedTooDeep(document) && decodePreferences(document);
}

}  // namespace thermopix
