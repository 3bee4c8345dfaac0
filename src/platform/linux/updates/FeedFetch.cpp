#include "platform/linux/updates/FeedFetch.h"

#include <curl/curl.h>
#include <fmt/core.h>

#include <memory>
#include <optional>
#include <utility>

namespace thermopix {

namespace {

using Clock = std::chrono::steady_clock;
using CurlHandle = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using AddressHandle = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

enum class AddressKind { https, httpToThisMachine, unacceptable };

std::string part(CURLU* address, CURLUPart which) {
    char* text = nullptr;
    if (curl_url_get(address, which, &text, 0) != CURLUE_OK) {
        return {};
    }
    const std::unique_ptr<char, decltype(&curl_free)> held(text, &curl_free);
    return text;
}

/// Judged by the parser of the library that will use the address.
AddressKind kindOf(const std::string& text) {
    const AddressHandle address(curl_url(), &curl_url_cleanup);
    if (!address || curl_url_set(address.get(), CURLUPART_URL, text.c_str(), CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK) {
        return AddressKind::unacceptable;
    }
    const auto scheme = part(address.get(), CURLUPART_SCHEME);
    const auto host = part(address.get(), CURLUPART_HOST);
    if (scheme == "https") {
        return AddressKind::https;
    }
    const bool isThisMachine = host == "127.0.0.1" || host == "[::1]";
    return scheme == "http" && isThisMachine ? AddressKind::httpToThisMachine : AddressKind::unacceptable;
}

/// Takes bytes up to a bound and refuses the one after it.
struct BoundedSink {
    std::size_t bound;
    std::string body = {};
    std::size_t headerBytes = 0;
    bool isFull = false;

    std::size_t takeBody(const char* bytes, std::size_t count) {
        isFull = isFull || count > bound - body.size();
        if (isFull) {
            return 0;
        }
        body.append(bytes, count);
        return count;
    }
    std::size_t takeHeader(std::size_t count) {
        isFull = isFull || count > bound - headerBytes;
        headerBytes += isFull ? 0 : count;
        return isFull ? 0 : count;
    }
};

std::size_t writeBody(char* bytes, std::size_t size, std::size_t count, void* sink) {
    return static_cast<BoundedSink*>(sink)->takeBody(bytes, size * count);
}

std::size_t writeHeader(char* /*bytes*/, std::size_t size, std::size_t count, void* sink) {
    return static_cast<BoundedSink*>(sink)->takeHeader(size * count);
}

CheckFailure failureOf(CURLcode code, const BoundedSink& sink) {
    if (sink.isFull) {
        return CheckFailure::tooLarge;
    }
    switch (code) {
        case CURLE_OPERATION_TIMEDOUT:
            return CheckFailure::tooSlow;
        case CURLE_FILESIZE_EXCEEDED:
            return CheckFailure::tooLarge;
        case CURLE_UNSUPPORTED_PROTOCOL:  // what came back is no HTTP
        case CURLE_WEIRD_SERVER_REPLY:
            return CheckFailure::refused;
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_SSL_CERTPROBLEM:
        case CURLE_SSL_CIPHER:
        case CURLE_SSL_CACERT_BADFILE:
        case CURLE_SSL_ISSUER_ERROR:
        case CURLE_SSL_INVALIDCERTSTATUS:
        case CURLE_USE_SSL_FAILED:
            return CheckFailure::insecure;
        default:
            return CheckFailure::unreachable;
    }
}

struct Redirect {
    std::string address;
};
using HopOutcome = std::variant<std::string, Redirect, CheckFailed>;

/// Options that this library does not know would leave a bound or a check off.
template <typename... Values>
bool setAll(CURL* curl, std::pair<CURLoption, Values>... options) {
    return ((curl_easy_setopt(curl, options.first, options.second) == CURLE_OK) && ...);
}

HopOutcome fetchOnce(const std::string& address, const std::string& userAgent, const FetchLimits& limits,
                     std::chrono::milliseconds timeLeft) {
    const CurlHandle curl(curl_easy_init(), &curl_easy_cleanup);
    BoundedSink sink{limits.bytes};
    const bool isReady =
        curl != nullptr &&
        setAll(curl.get(), std::pair(CURLOPT_URL, address.c_str()), std::pair(CURLOPT_USERAGENT, userAgent.c_str()),
               std::pair(CURLOPT_PROTOCOLS_STR, "http,https"), std::pair(CURLOPT_FOLLOWLOCATION, 0L),
               std::pair(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2)),
               std::pair(CURLOPT_SSL_VERIFYPEER, 1L), std::pair(CURLOPT_SSL_VERIFYHOST, 2L),
               std::pair(CURLOPT_TIMEOUT_MS, static_cast<long>(timeLeft.count())),
               std::pair(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(limits.bytes)),
               std::pair(CURLOPT_NOSIGNAL, 1L), std::pair(CURLOPT_WRITEFUNCTION, &writeBody),
               std::pair(CURLOPT_WRITEDATA, static_cast<void*>(&sink)), std::pair(CURLOPT_HEADERFUNCTION, &writeHeader),
               std::pair(CURLOPT_HEADERDATA, static_cast<void*>(&sink))) &&
        (limits.authorities.empty() || setAll(curl.get(), std::pair(CURLOPT_CAINFO, limits.authorities.c_str()),
                                              std::pair(CURLOPT_CAPATH, static_cast<const char*>(nullptr))));
    if (!isReady) {
        return CheckFailed{CheckFailure::unavailable, "the network library lacks an option"};
    }
    const CURLcode code = curl_easy_perform(curl.get());
    if (code != CURLE_OK) {
        return CheckFailed{failureOf(code, sink), fmt::format("{}: {}", address, curl_easy_strerror(code))};
    }
    long status = 0;
    const char* next = nullptr;
    curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(curl.get(), CURLINFO_REDIRECT_URL, &next);
    if (next != nullptr) {
        return Redirect{next};
    }
    if (status != 200) {
        return CheckFailed{CheckFailure::refused, fmt::format("{}: HTTP status {}", address, status)};
    }
    return std::move(sink.body);
}

}  // namespace

std::variant<std::string, CheckFailed> fetchFeed(const std::string& address, const std::string& userAgent,
                                                 const FetchLimits& limits) {
    const auto deadline = Clock::now() + limits.time;
    std::string current = address;
    bool wasEncrypted = false;
    for (int hop = 0; hop <= limits.redirects; ++hop) {
        const auto kind = kindOf(current);
        if (kind == AddressKind::unacceptable || (wasEncrypted && kind != AddressKind::https)) {
            return CheckFailed{CheckFailure::insecure, fmt::format("{}: not over HTTPS", current)};
        }
        wasEncrypted = kind == AddressKind::https;
        const auto timeLeft = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (timeLeft.count() <= 0) {
            return CheckFailed{CheckFailure::tooSlow, fmt::format("{}: out of time", current)};
        }
        auto outcome = fetchOnce(current, userAgent, limits, timeLeft);
        if (auto* redirect = std::get_if<Redirect>(&outcome)) {
            current = std::move(redirect->address);
            continue;
        }
        if (auto* failed = std::get_if<CheckFailed>(&outcome)) {
            return std::move(*failed);
        }
        return std::move(std::get<std::string>(outcome));
    }
    return CheckFailed{CheckFailure::refused, fmt::format("{}: too many redirects", address)};
}

}  // namespace thermopix
