#include "platform/linux/application/LinuxApplication.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

#include "environment/AppInfo.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

namespace {

constexpr const char* logCategory = "desktop";
constexpr const char* applicationInterface = "org.freedesktop.Application";
constexpr const char* introspection = R"(
<node>
  <interface name="org.freedesktop.Application">
    <method name="Activate"><arg type="a{sv}" direction="in"/></method>
    <method name="Open"><arg type="as" direction="in"/><arg type="a{sv}" direction="in"/></method>
    <method name="ActivateAction">
      <arg type="s" direction="in"/><arg type="av" direction="in"/><arg type="a{sv}" direction="in"/>
    </method>
  </interface>
</node>)";

constexpr guint32 doNotQueue = 4;
constexpr guint32 primaryOwner = 1;
constexpr guint32 alreadyOwner = 4;
constexpr int replyTimeoutMilliseconds = 5000;

const std::string& busName() {
    static const std::string name(AppInfo::identifier);
    return name;
}

std::string objectPath() {
    std::string path = "/" + busName();
    std::replace(path.begin(), path.end(), '.', '/');
    return path;
}

// What lets a window come to the front: where a launcher leaves it, and how it is handed on. The first one found
// counts.
struct ActivationToken {
    const char* variable;
    const char* key;
};
constexpr std::array activationTokens{ActivationToken{"XDG_ACTIVATION_TOKEN", "activation-token"},
                                      ActivationToken{"DESKTOP_STARTUP_ID", "desktop-startup-id"}};

std::string ownActivationToken() {
    for (const auto& token : activationTokens) {
        const char* value = std::getenv(token.variable);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return {};
}

GVariant* platformData() {
    GVariantBuilder data;
    g_variant_builder_init(&data, G_VARIANT_TYPE_VARDICT);
    for (const auto& token : activationTokens) {
        if (const char* value = std::getenv(token.variable)) {
            g_variant_builder_add(&data, "{sv}", token.key, g_variant_new_string(value));
        }
    }
    return g_variant_builder_end(&data);
}

// The platform data are the last argument of every method.
std::string activationToken(GVariant* parameters) {
    const GVariantHandle data(g_variant_get_child_value(parameters, g_variant_n_children(parameters) - 1));
    for (const auto& token : activationTokens) {
        const char* value = nullptr;
        if (g_variant_lookup(data.get(), token.key, "&s", &value) != FALSE) {
            return value;
        }
    }
    return {};
}

void handleCall(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/, const char* /*interface*/,
                const char* method, GVariant* parameters, GDBusMethodInvocation* invocation, gpointer self) {
    auto& application = *static_cast<LinuxApplication*>(self);
    const bool isActivation = std::string_view(method) != "ActivateAction";
    g_dbus_method_invocation_return_value(invocation, nullptr);
    // There are no documents and no actions of its own: whoever opens the program wants to see it.
    if (isActivation && application.onActivate) {
        application.useActivationToken(activationToken(parameters));
        application.onActivate();
    }
}

}  // namespace

LinuxApplication::LinuxApplication(GDBusConnection* sessionBus, WindowClient& windows, GLibMainLoop& mainLoop,
                                   DiagnosticLog& log)
    : bus_(sessionBus), mainLoop_(mainLoop), log_(log), windows_(windows) {
    windows_.useActivationToken(ownActivationToken());
    windows_.onAction = [this](MenuAction action) { perform(action); };
    windows_.onReopen = [this] {
        if (onActivate) {
            onActivate();
        }
    };
    if (bus_ != nullptr) {
        closed_ = onClosed(bus_, [this] {
            log_.diag(logCategory, "the session bus is gone; ending");
            terminate();
        });
    }
}

LinuxApplication::~LinuxApplication() {
    closed_.cancel();
    if (registration_ != 0) {
        g_dbus_connection_unregister_object(bus_, registration_);
    }
}

bool LinuxApplication::hasOtherRunningInstance() {
    if (bus_ == nullptr) {
        return false;
    }
    exportObject();
    GErrorSlot error;
    const GVariantHandle reply(g_dbus_connection_call_sync(
        bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", busName().c_str(), doNotQueue), G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE,
        replyTimeoutMilliseconds, nullptr, error.out()));
    if (!reply) {
        log_.diag(logCategory, "cannot own " + busName() + ": " + std::string(error.message()));
        return false;
    }
    guint32 answer = 0;
    g_variant_get(reply.get(), "(u)", &answer);
    return answer != primaryOwner && answer != alreadyOwner;
}

void LinuxApplication::activateOtherRunningInstance() {
    GErrorSlot error;
    const GVariantHandle reply(
        g_dbus_connection_call_sync(bus_, busName().c_str(), objectPath().c_str(), applicationInterface, "Activate",
                                    g_variant_new("(@a{sv})", platformData()), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                    replyTimeoutMilliseconds, nullptr, error.out()));
    if (!reply) {
        log_.diag(logCategory, "cannot activate the running instance: " + std::string(error.message()));
    }
}

void LinuxApplication::setActivationPolicy(ActivationPolicy policy) {
    policy_ = policy;
    windows_.setActivationPolicy(policy);
}

void LinuxApplication::perform(MenuAction action) {
    if (action == MenuAction::terminate) {
        terminate();
    } else if (action == MenuAction::showAboutPanel && onShowAboutPanel) {
        onShowAboutPanel();
    }
}

void LinuxApplication::exportObject() {
    if (registration_ != 0) {
        return;
    }
    static constexpr GDBusInterfaceVTable calls{handleCall, nullptr, nullptr, {}};
    const GNodeInfoHandle node(g_dbus_node_info_new_for_xml(introspection, nullptr));
    GErrorSlot error;
    registration_ = g_dbus_connection_register_object(bus_, objectPath().c_str(), node->interfaces[0], &calls, this,
                                                      nullptr, error.out());
    if (registration_ == 0) {
        log_.diag(logCategory,
                  "cannot speak " + std::string(applicationInterface) + ": " + std::string(error.message()));
    }
}

}  // namespace thermopix
