#include "platform/linux/application/LinuxApplication.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <system_error>

#include "environment/AppInfo.h"
#include "platform/linux/bus/BusNotice.h"
#include "platform/linux/files/CompanionProgram.h"
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

constexpr const char* busService = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";
constexpr guint32 allowReplacement = 1;
constexpr guint32 replaceExisting = 2;
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

LinuxApplication::LinuxApplication(GDBusConnection* sessionBus, Services services, InstanceKind kind)
    : bus_(sessionBus), mainLoop_(services.mainLoop), log_(services.log), kind_(kind), windows_(services.windows) {
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
    nameLost_ =
        observeSignal(bus_, {busService, busPath, busService, "NameLost", busName().c_str()}, [this](GVariant*) {
            log_.diag(logCategory, "another start of the program takes over; ending");
            terminate();
        });
    if (requestName()) {
        return false;
    }
    if (isHeldByStranger()) {
        log_.diag(logCategory, busName() + " belongs to another program; going on without it");
        return false;
    }
    return true;
}

bool LinuxApplication::activateOtherRunningInstance() {
    GErrorSlot error;
    const GVariantHandle reply(
        g_dbus_connection_call_sync(bus_, busName().c_str(), objectPath().c_str(), applicationInterface, "Activate",
                                    g_variant_new("(@a{sv})", platformData()), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                    replyTimeoutMilliseconds, nullptr, error.out()));
    if (reply) {
        return true;
    }
    if (error.matches(G_IO_ERROR, G_IO_ERROR_TIMED_OUT)) {
        log_.diag(logCategory, std::string(AppInfo::name) + " is running already and does not answer; ending");
        exitStatus_ = EXIT_FAILURE;
        return true;
    }
    log_.diag(logCategory, "cannot activate the running instance: " + std::string(error.message()));
    // It may have ended meanwhile.
    static_cast<void>(requestName());
    return false;
}

bool LinuxApplication::requestName() {
    const guint32 flags = doNotQueue | (kind_ == InstanceKind::withDisplay ? replaceExisting : allowReplacement);
    GErrorSlot error;
    const GVariantHandle reply(g_dbus_connection_call_sync(
        bus_, busService, busPath, busService, "RequestName", g_variant_new("(su)", busName().c_str(), flags),
        G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, replyTimeoutMilliseconds, nullptr, error.out()));
    if (!reply) {
        log_.diag(logCategory, "cannot own " + busName() + ": " + std::string(error.message()));
        return true;
    }
    guint32 answer = 0;
    g_variant_get(reply.get(), "(u)", &answer);
    return answer == primaryOwner || answer == alreadyOwner;
}

std::optional<std::uint32_t> LinuxApplication::processOf(const char* name) const {
    const GVariantHandle reply(g_dbus_connection_call_sync(
        bus_, busService, busPath, busService, "GetConnectionUnixProcessID", g_variant_new("(s)", name),
        G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, replyTimeoutMilliseconds, nullptr, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    guint32 process = 0;
    g_variant_get(reply.get(), "(u)", &process);
    return process;
}

bool LinuxApplication::isHeldByStranger() const {
    // In a sandbox the bus numbers processes otherwise than we do.
    const auto self = processOf(g_dbus_connection_get_unique_name(bus_));
    const auto owner = processOf(busName().c_str());
    return self == static_cast<std::uint32_t>(getpid()) && owner && isStranger(*owner, runningProgram());
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

bool isStranger(std::uint32_t process, const std::filesystem::path& program, const std::filesystem::path& processRoot) {
    const auto folder = processRoot / std::to_string(process);
    std::error_code error;
    if (!std::filesystem::exists(folder, error)) {
        return !error;
    }
    auto name = std::filesystem::read_symlink(folder / "exe", error).filename().string();
    // An update has replaced the file since that process was started.
    constexpr std::string_view replaced = " (deleted)";
    if (name.ends_with(replaced)) {
        name.resize(name.size() - replaced.size());
    }
    return !error && name != program.filename();
}

}  // namespace thermopix
