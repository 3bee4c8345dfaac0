#include "updates/UpdateVerdict.h"

#include <nlohmann/json.hpp>

#include "base/Unicode.h"
#include "updates/PageAddress.h"
#include "updates/Version.h"

namespace thermopix {

namespace {

using Json = nlohmann::ordered_json;

struct Encoder {
    Json operator()(const UpToDate& /*verdict*/) const { return {{"verdict", "upToDate"}}; }
    Json operator()(const UpdateAvailable& verdict) const {
        Json object{{"verdict", "updateAvailable"}, {"version", verdict.version}};
        if (verdict.page) {
            object["page"] = *verdict.page;
        }
        object["isCritical"] = verdict.isCritical;
        return object;
    }
    Json operator()(const CheckFailed& verdict) const {
        return {{"verdict", "failed"}, {"reason", rawValue(verdict.failure)}, {"detail", repairedUtf8(verdict.detail)}};
    }
};

std::optional<std::string> text(const Json& object, const char* key) {
    const auto member = object.find(key);
    return member != object.end() && member->is_string() ? std::optional(member->get<std::string>()) : std::nullopt;
}

std::optional<UpdateVerdict> availableUpdate(const Json& object) {
    const auto version = text(object, "version");
    const auto isCritical = object.find("isCritical");
    if (!version || !Version::parse(*version) || isCritical == object.end() || !isCritical->is_boolean()) {
        return std::nullopt;
    }
    UpdateAvailable update{*version, text(object, "page"), isCritical->get<bool>()};
    if (update.page.has_value() != object.contains("page") || (update.page && !isPageAddress(*update.page))) {
        return std::nullopt;
    }
    return update;
}

std::optional<UpdateVerdict> failedCheck(const Json& object) {
    const auto failure = fromRawValue<CheckFailure>(text(object, "reason").value_or(""));
    if (!failure) {
        return std::nullopt;
    }
    return CheckFailed{*failure, text(object, "detail").value_or("")};
}

}  // namespace

std::string verdictLine(const UpdateVerdict& verdict) {
    return std::visit(Encoder(), verdict).dump();
}

std::optional<UpdateVerdict> verdictFromLine(std::string_view line) {
    const auto object = Json::parse(line, nullptr, false);
    if (!object.is_object()) {
        return std::nullopt;
    }
    const auto verdict = text(object, "verdict");
    if (verdict == "upToDate") {
        return UpToDate();
    }
    if (verdict == "updateAvailable") {
        return availableUpdate(object);
    }
    return verdict == "failed" ? failedCheck(object) : std::nullopt;
}

}  // namespace thermopix
