#include "platform/linux/updates/PackageKitService.h"

#include <array>
#include <chrono>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/linux/bus/BusCall.h"
#include "platform/linux/bus/BusNotice.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

namespace {

constexpr const char* service = "org.freedesktop.PackageKit";
constexpr const char* path = "/org/freedesktop/PackageKit";
constexpr const char* transactionInterface = "org.freedesktop.PackageKit.Transaction";

// Sets of the service's filters, and its numbers for an action and for an end.
constexpr guint64 noFilter = 1U << 1U;
constexpr guint64 installedFilter = 1U << 2U;
constexpr guint32 refreshAction = 13;
constexpr guint32 success = 1;

/// Longer than anyone waits for the service, whose start may take long: whoever asks knows when to drop the handle.
constexpr std::chrono::minutes patience(5);

/// One question that is answered by signals, from its making to its answer.
class Transaction {
public:
    using Outcome = PackageService::Outcome;

    /// `parameters` are the method's.
    Transaction(GDBusConnection* bus, const char* method, GVariant* parameters, PackageService::Visit visit,
                PackageService::Ended ended)
        : bus_(bus),
          method_(method),
          parameters_(g_variant_ref_sink(parameters)),
          visit_(std::move(visit)),
          ended_(std::move(ended)) {
        call_ = callMethod(
            bus_, {service, path, service, "CreateTransaction"}, nullptr, "(o)",
            [this](GVariant* reply) {
                if (reply == nullptr) {
                    end(Outcome::noService);
                } else {
                    const char* made = nullptr;
                    g_variant_get(reply, "(&o)", &made);
                    path_ = made;
                    listen();
                }
            },
            patience);
    }

private:
    void listen() {
        // A service that dies says nothing, and the one that is started next knows nothing of the question.
        owner_ = observeNameOwner(bus_, service, [this](std::string_view owner) {
            if (owner.empty()) {
                end(Outcome::failed);
            }
        });
        package_ = observe("Package", "(uss)", [this](GVariant* parameters) { visit(parameters); });
        packages_ = observe("Packages", "(a(uss))", [this](GVariant* parameters) {
            const GVariantHandle list(g_variant_get_child_value(parameters, 0));
            const auto count = g_variant_n_children(list.get());
            for (gsize i = 0; i < count; ++i) {
                const GVariantHandle package(g_variant_get_child_value(list.get(), i));
                visit(package.get());
            }
        });
        finished_ = observe("Finished", "(uu)", [this](GVariant* parameters) {
            guint32 exit = 0;
            g_variant_get_child(parameters, 0, "u", &exit);
            end(exit == success ? Outcome::complete : Outcome::failed);
        });
        ask();
    }

    void ask() {
        // What is on this machine is enough, and nobody is there to be asked anything. A service that knows none of
        // these hints is asked all the same.
        constexpr std::array<const char*, 4> hints{"interactive=false", "cache-age=4294967295",
                                                   "supports-plural-signals=true", nullptr};
        call_ = call("SetHints", g_variant_new("(^as)", hints.data()), [this](GVariant* /*reply*/) {
            call_ = call(method_, parameters_.get(), [this](GVariant* reply) {
                if (reply == nullptr) {
                    end(Outcome::failed);
                }
            });
        });
    }

    Subscription observe(const char* signal, const char* type, std::function<void(GVariant*)> handler) {
        return observeSignal(bus_, {service, path_.c_str(), transactionInterface, signal},
                             [type, handler = std::move(handler)](GVariant* parameters) {
                                 if (g_variant_is_of_type(parameters, G_VARIANT_TYPE(type)) != FALSE) {
                                     handler(parameters);
                                 }
                             });
    }

    Subscription call(const char* method, GVariant* parameters, std::function<void(GVariant*)> handler) {
        return callMethod(bus_, {service, path_.c_str(), transactionInterface, method}, parameters, "()",
                          std::move(handler), patience);
    }

    void visit(GVariant* package) const {
        ListedPackage listed;
        const char* identifier = nullptr;
        g_variant_get(package, "(u&s&s)", &listed.info, &identifier, nullptr);
        listed.identifier = identifier;
        visit_(listed);
    }

    /// The last that is done here: who hears of it may let go of this question.
    void end(Outcome outcome) {
        for (auto* part : {&call_, &owner_, &package_, &packages_, &finished_}) {
            part->cancel();
        }
        const auto ended = std::move(ended_);
        ended(outcome);
    }

    GDBusConnection* bus_;
    const char* method_;
    GVariantHandle parameters_;
    PackageService::Visit visit_;
    PackageService::Ended ended_;
    std::string path_;
    Subscription call_;
    Subscription owner_;
    Subscription package_;
    Subscription packages_;
    Subscription finished_;
};

}  // namespace

Subscription PackageKitService::listInstalled(const std::string& name, Visit visit, Ended ended) {
    const std::array<const char*, 2> names{name.c_str(), nullptr};
    return list("Resolve", g_variant_new("(t^as)", installedFilter, names.data()), std::move(visit), std::move(ended));
}

Subscription PackageKitService::listUpdates(Visit visit, Ended ended) {
    return list("GetUpdates", g_variant_new("(t)", noFilter), std::move(visit), std::move(ended));
}

Subscription PackageKitService::list(const char* method, GVariant* parameters, Visit visit, Ended ended) {
    if (systemBus_ == nullptr) {
        const GVariantHandle unused(g_variant_ref_sink(parameters));
        return mainLoop_.oneShot(MainLoop::Duration::zero(), [ended = std::move(ended)] { ended(Outcome::noService); });
    }
    return Subscription([transaction = std::make_shared<Transaction>(systemBus_, method, parameters, std::move(visit),
                                                                     std::move(ended))] {});
}

Subscription PackageKitService::readAge(std::function<void(std::optional<std::chrono::seconds>)> told) {
    return callMethod(
        systemBus_, {service, path, service, "GetTimeSinceAction"}, g_variant_new("(u)", refreshAction), "(u)",
        [told = std::move(told)](GVariant* reply) {
            constexpr auto unknown = std::numeric_limits<guint32>::max();
            guint32 seconds = unknown;
            if (reply != nullptr) {
                g_variant_get(reply, "(u)", &seconds);
            }
            told(seconds == unknown ? std::nullopt : std::optional(std::chrono::seconds(seconds)));
        },
        patience);
}

}  // namespace thermopix
