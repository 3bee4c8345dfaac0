#pragma once

#include <gio/gio.h>

#include <memory>
#include <string_view>

namespace thermopix {

/// Calls one of GLib's freeing functions; costs no memory in a handle.
template <auto release>
struct GLibRelease {
    template <typename Object>
    void operator()(Object* object) const noexcept {
        release(object);
    }
};

/// Owning pointers for what GLib hands out as "transfer full"; empty for none.
template <typename Object>
using GObjectHandle = std::unique_ptr<Object, GLibRelease<&g_object_unref>>;

using GErrorHandle = std::unique_ptr<GError, GLibRelease<&g_error_free>>;
using GVariantHandle = std::unique_ptr<GVariant, GLibRelease<&g_variant_unref>>;
using GBytesHandle = std::unique_ptr<GBytes, GLibRelease<&g_bytes_unref>>;
using GStringHandle = std::unique_ptr<gchar, GLibRelease<&g_free>>;
using GStringListHandle = std::unique_ptr<gchar*, GLibRelease<&g_strfreev>>;
using GKeyFileHandle = std::unique_ptr<GKeyFile, GLibRelease<&g_key_file_unref>>;
using GNodeInfoHandle = std::unique_ptr<GDBusNodeInfo, GLibRelease<&g_dbus_node_info_unref>>;
using GMainContextHandle = std::unique_ptr<GMainContext, GLibRelease<&g_main_context_unref>>;
using GMainLoopHandle = std::unique_ptr<GMainLoop, GLibRelease<&g_main_loop_unref>>;

/// A source that leaves its context with its owner, from inside its own callback too.
struct GSourceRelease {
    void operator()(GSource* source) const noexcept {
        g_source_destroy(source);
        g_source_unref(source);
    }
};
using GSourceHandle = std::unique_ptr<GSource, GSourceRelease>;

/// Shares an object that someone else owns.
template <typename Object>
[[nodiscard]] GObjectHandle<Object> retained(Object* object) {
    return GObjectHandle<Object>(object == nullptr ? nullptr : static_cast<Object*>(g_object_ref(object)));
}

/// Where a call puts its error: `g_call(..., error.out())`.
class GErrorSlot {
public:
    GErrorSlot() = default;
    ~GErrorSlot() { g_clear_error(&error_); }
    GErrorSlot(const GErrorSlot&) = delete;
    GErrorSlot& operator=(const GErrorSlot&) = delete;

    /// Forgets an earlier error.
    [[nodiscard]] GError** out() {
        g_clear_error(&error_);
        return &error_;
    }
    [[nodiscard]] const GError* get() const { return error_; }
    [[nodiscard]] bool matches(GQuark domain, int code) const { return g_error_matches(error_, domain, code) != FALSE; }
    /// Why the call failed; empty when it did not.
    [[nodiscard]] std::string_view message() const { return error_ == nullptr ? "" : error_->message; }

private:
    GError* error_ = nullptr;
};

}  // namespace thermopix
