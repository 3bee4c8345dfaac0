#include "messages/MessageCodec.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <type_traits>
#include <utility>
#include <vector>

#include "messages/Fields.h"

namespace thermopix::MessageCodec {

namespace {

using Json = nlohmann::ordered_json;

// Deeper than any window or menu, and far from the end of the stack.
constexpr int maximumDepth = 100;
constexpr std::int64_t maximumBitmapSide = 4096;
constexpr const char* widthName = "width";
constexpr const char* rowsName = "rows";

template <typename Value, template <typename...> typename Template>
inline constexpr bool isInstance = false;
template <template <typename...> typename Template, typename... Arguments>
inline constexpr bool isInstance<Template<Arguments...>, Template> = true;

template <typename Value>
inline constexpr bool isInteger = std::is_integral_v<Value> && !std::is_same_v<Value, bool>;

Json encoded(const PixelBitmap& bitmap) {
    Json rows = Json::array();
    auto cell = bitmap.cells().begin();
    for (std::int64_t y = 0; y < bitmap.height(); ++y) {
        std::string row;
        for (std::int64_t x = 0; x < bitmap.width(); ++x) {
            row += artCharacter(*cell++);
        }
        rows.push_back(std::move(row));
    }
    return {{widthName, bitmap.width()}, {rowsName, std::move(rows)}};
}

template <typename Value>
Json encoded(const Value& value) {
    if constexpr (std::is_same_v<Value, bool> || std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string>) {
        return value;
    } else if constexpr (std::is_enum_v<Value>) {
        return rawValue(value);
    } else if constexpr (isInstance<Value, std::optional>) {
        return encoded(*value);
    } else if constexpr (isInstance<Value, std::vector>) {
        Json list = Json::array();
        for (const auto& element : value) {
            list.push_back(encoded(element));
        }
        return list;
    } else if constexpr (isInstance<Value, std::variant>) {
        Json object = Json::object();
        object[std::string(Alternatives<Value>::names[value.index()])] =
            std::visit([](const auto& alternative) { return encoded(alternative); }, value);
        return object;
    } else {
        static const Value defaults{};
        Json object = Json::object();
        const auto add = [&](const auto& field) {
            if (!(value.*field.member == defaults.*field.member)) {
                object[std::string(field.name)] = encoded(value.*field.member);
            }
        };
        std::apply([&](const auto&... field) { (add(field), ...); }, Fields<Value>::rows);
        return object;
    }
}

std::optional<Ink> inkNamed(char character) {
    const Ink ink = inkFromArt(character);
    return artCharacter(ink) == character ? std::optional(ink) : std::nullopt;
}

// Each `decode` answers whether the JSON is a value of that type, and then has put it into `value`.
class Decoder {
public:
    static bool decode(const Json& json, bool& value, int /*depth*/) {
        if (!json.is_boolean()) {
            return false;
        }
        value = json.get<bool>();
        return true;
    }

    static bool decode(const Json& json, double& value, int /*depth*/) {
        if (!json.is_number()) {
            return false;
        }
        value = json.get<double>();
        return true;
    }

    template <typename Integer, std::enable_if_t<isInteger<Integer>, int> = 0>
    static bool decode(const Json& json, Integer& value, int /*depth*/) {
        // Wide enough for every integer of a message.
        static_assert(sizeof(Integer) <= sizeof(std::int32_t));
        if (!json.is_number_integer()) {
            return false;
        }
        const auto number = json.get<std::int64_t>();
        const bool isWrapped = json.is_number_unsigned() && number < 0;
        if (isWrapped || number < std::int64_t{std::numeric_limits<Integer>::min()} ||
            number > std::int64_t{std::numeric_limits<Integer>::max()}) {
            return false;
        }
        value = static_cast<Integer>(number);
        return true;
    }

    static bool decode(const Json& json, std::string& value, int /*depth*/) {
        if (!json.is_string()) {
            return false;
        }
        value = json.get_ref<const std::string&>();
        return true;
    }

    template <typename Case, std::enable_if_t<std::is_enum_v<Case>, int> = 0>
    static bool decode(const Json& json, Case& value, int /*depth*/) {
        const auto found = json.is_string() ? fromRawValue<Case>(json.get_ref<const std::string&>()) : std::nullopt;
        value = found.value_or(value);
        return found.has_value();
    }

    static bool decode(const Json& json, PixelBitmap& value, int depth) {
        std::int32_t width = 0;
        if (!json.is_object() || json.size() != 2 || !json.contains(widthName) || !json.contains(rowsName) ||
            !decode(json[widthName], width, depth) || width < 0 || width > maximumBitmapSide) {
            return false;
        }
        const Json& rows = json[rowsName];
        if (!rows.is_array() || rows.size() > std::size_t{maximumBitmapSide}) {
            return false;
        }
        std::vector<Ink> cells;
        for (const Json& row : rows) {
            if (!row.is_string() || row.get_ref<const std::string&>().size() != static_cast<std::size_t>(width)) {
                return false;
            }
            for (const char character : row.get_ref<const std::string&>()) {
                const auto ink = inkNamed(character);
                if (!ink) {
                    return false;
                }
                cells.push_back(*ink);
            }
        }
        value = PixelBitmap(width, static_cast<std::int64_t>(rows.size()), std::move(cells));
        return true;
    }

    template <typename Value>
    static bool decode(const Json& json, std::optional<Value>& value, int depth) {
        return decode(json, value.emplace(), depth);
    }

    template <typename Value>
    static bool decode(const Json& json, std::vector<Value>& value, int depth) {
        if (!json.is_array()) {
            return false;
        }
        for (const Json& element : json) {
            if (!decode(element, value.emplace_back(), depth)) {
                return false;
            }
        }
        return true;
    }

    template <typename Variant, std::size_t... Index>
    static bool decodeAlternative(const Json& json, std::string_view name, Variant& value, int depth,
                                  std::index_sequence<Index...> /*indices*/) {
        return ((Alternatives<Variant>::names[Index] == name && decode(json, value.template emplace<Index>(), depth)) ||
                ...);
    }

    template <typename... Alternative>
    static bool decode(const Json& json, std::variant<Alternative...>& value, int depth) {
        return json.is_object() && json.size() == 1 &&
               decodeAlternative(json.front(), json.begin().key(), value, depth,
                                 std::index_sequence_for<Alternative...>());
    }

    template <typename Record, typename = decltype(Fields<Record>::rows)>
    static bool decode(const Json& json, Record& value, int depth) {
        if (!json.is_object() || depth == maximumDepth) {
            return false;
        }
        std::size_t known = 0;
        const auto read = [&](const auto& field) {
            const auto found = json.find(field.name);
            if (found == json.end()) {
                return true;
            }
            ++known;
            return decode(*found, value.*field.member, depth + 1);
        };
        const bool isWhole =
            std::apply([&](const auto&... field) { return (read(field) && ...); }, Fields<Record>::rows);
        return isWhole && known == json.size();
    }
};

template <typename Message>
std::string lineOf(const Message& message) {
    constexpr int compact = -1;
    return encoded(message).dump(compact, ' ', false, Json::error_handler_t::replace);
}

template <typename Message>
std::optional<Message> messageOf(std::string_view line) {
    constexpr bool throws = false;
    const Json json = Json::parse(line.begin(), line.end(), nullptr, throws);
    std::optional<Message> message(std::in_place);
    if (!Decoder::decode(json, *message, 0)) {
        message.reset();
    }
    return message;
}

}  // namespace

std::string line(const WindowRequest& request) {
    return lineOf(request);
}

std::string line(const WindowEvent& event) {
    return lineOf(event);
}

std::optional<WindowRequest> request(std::string_view line) {
    return messageOf<WindowRequest>(line);
}

std::optional<WindowEvent> event(std::string_view line) {
    return messageOf<WindowEvent>(line);
}

}  // namespace thermopix::MessageCodec
