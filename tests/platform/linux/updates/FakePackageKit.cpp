#include "FakePackageKit.h"

#include <stdexcept>

#include "platform/linux/tray/TestBus.h"

namespace thermopix {

namespace {

constexpr const char* name = "org.freedesktop.PackageKit";
constexpr const char* transactionInterface = "org.freedesktop.PackageKit.Transaction";

constexpr const char* introspection = R"(<node>
  <interface name="org.freedesktop.PackageKit">
    <method name="CreateTransaction"><arg direction="out" type="o"/></method>
    <method name="GetTimeSinceAction"><arg direction="in" type="u"/><arg direction="out" type="u"/></method>
  </interface>
  <interface name="org.freedesktop.PackageKit.Transaction">
    <method name="SetHints"><arg direction="in" type="as"/></method>
    <method name="Resolve"><arg direction="in" type="t"/><arg direction="in" type="as"/></method>
    <method name="GetUpdates"><arg direction="in" type="t"/></method>
  </interface>
</node>)";

void refuse(GDBusMethodInvocation* invocation) {
    g_dbus_method_invocation_return_dbus_error(invocation, "org.example.Refused", "<b>not now</b>");
}

void emit(GDBusConnection* from, const std::string& path, const char* signal, GVariant* parameters) {
    g_dbus_connection_emit_signal(from, nullptr, path.c_str(), transactionInterface, signal, parameters, nullptr);
}

}  // namespace

FakePackageKit::FakePackageKit()
    : connection_(TestBus::instance().connect()), description_(g_dbus_node_info_new_for_xml(introspection, nullptr)) {
    takeName(connection_.get(), name);
    static constexpr GDBusInterfaceVTable table{&answerCall, nullptr, nullptr, {}};
    g_dbus_connection_register_object(connection_.get(), "/org/freedesktop/PackageKit", description_->interfaces[0],
                                      &table, this, nullptr, nullptr);
}

FakePackageKit::~FakePackageKit() {
    leave();
}

void FakePackageKit::leave() {
    if (connection_) {
        disconnect(std::move(connection_));
    }
}

void FakePackageKit::answerCall(GDBusConnection* /*connection*/, const gchar* /*sender*/, const gchar* path,
                                const gchar* /*interface*/, const gchar* method, GVariant* parameters,
                                GDBusMethodInvocation* invocation, gpointer self) {
    const GStringHandle printed(g_variant_print(parameters, FALSE));
    auto& service = *static_cast<FakePackageKit*>(self);
    service.calls.push_back(std::string(method) + printed.get());
    service.answer(path, method, invocation);
}

void FakePackageKit::answer(const std::string& path, const std::string& method, GDBusMethodInvocation* invocation) {
    const Fault fault = faults[method];
    if (method == "GetTimeSinceAction") {
        if (fault == Fault::refusesQuestions) {
            refuse(invocation);
        } else if (fault != Fault::saysNothing) {
            g_dbus_method_invocation_return_value(invocation, g_variant_new("(u)", age));
        }
    } else if (method == "SetHints") {
        if (fault == Fault::refusesHints) {
            refuse(invocation);
        } else {
            g_dbus_method_invocation_return_value(invocation, nullptr);
        }
    } else if (method == "CreateTransaction") {
        if (fault == Fault::refusesTransactions) {
            refuse(invocation);
            return;
        }
        static constexpr GDBusInterfaceVTable table{&answerCall, nullptr, nullptr, {}};
        const auto made = "/" + std::to_string(++transactions_) + "_abcdef";
        g_dbus_connection_register_object(g_dbus_method_invocation_get_connection(invocation), made.c_str(),
                                          description_->interfaces[1], &table, this, nullptr, nullptr);
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", made.c_str()));
    } else {
        answerQuestion(path, method == "Resolve" ? installed : updates, fault, invocation);
    }
}

void FakePackageKit::answerQuestion(const std::string& path, const Packages& packages, Fault fault,
                                    GDBusMethodInvocation* invocation) {
    constexpr std::uint32_t success = 1;
    constexpr std::uint32_t failure = 2;
    if (fault == Fault::refusesQuestions) {
        refuse(invocation);
        return;
    }
    g_dbus_method_invocation_return_value(invocation, nullptr);
    switch (fault) {
        case Fault::saysNothing:
            return;
        case Fault::dies:
            list(connection_.get(), path, packages, 0);
            g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
            leave();
            return;
        case Fault::sendsWrongTypes:
            for (const char* signal : {"Package", "Packages", "Finished"}) {
                emit(connection_.get(), path, signal, g_variant_new("(s)", "1"));
                emit(connection_.get(), path, signal, nullptr);
            }
            return;
        case Fault::answersForOthers:
            list(connection_.get(), "/9_others", packages, failure);
            list(connection_.get(), path, packages, success);
            return;
        case Fault::strangerAnswers: {
            const auto stranger = TestBus::instance().connect();
            list(stranger.get(), path, {{5, "thermopix;6.6.6;amd64;stranger"}}, failure);
            g_dbus_connection_flush_sync(stranger.get(), nullptr, nullptr);
            settle(stranger.get());
            list(connection_.get(), path, packages, success);
            return;
        }
        default:
            list(connection_.get(), path, packages, fault == Fault::endsWithAnError ? failure : success);
    }
}

void FakePackageKit::list(GDBusConnection* from, const std::string& path, const Packages& packages,
                          std::uint32_t exit) const {
    GVariantBuilder all;
    g_variant_builder_init(&all, G_VARIANT_TYPE("a(uss)"));
    for (const auto& package : packages) {
        auto* const record = g_variant_new("(uss)", package.info, package.identifier.c_str(), "A <b>summary</b>");
        if (isPlural) {
            g_variant_builder_add_value(&all, record);
        } else {
            emit(from, path, "Package", record);
        }
    }
    if (isPlural) {
        emit(from, path, "Packages", g_variant_new("(a(uss))", &all));
    } else {
        g_variant_builder_clear(&all);
    }
    if (exit != 0) {
        emit(from, path, "Finished", g_variant_new("(uu)", exit, 5U));
    }
}

}  // namespace thermopix
