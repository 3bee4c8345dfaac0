#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// A package service on the test bus, on a connection of its own; it records what it is asked and answers as told.
class FakePackageKit {
public:
    struct Package {
        std::uint32_t info;
        std::string identifier;
    };
    using Packages = std::vector<Package>;

    /// What goes wrong.
    enum class Fault {
        none,
        refusesTransactions,
        refusesHints,
        refusesQuestions,
        endsWithAnError,
        saysNothing,
        sendsWrongTypes,
        answersForOthers,
        strangerAnswers,
        dies,
    };

    FakePackageKit();
    /// Leaves the bus.
    ~FakePackageKit();
    FakePackageKit(const FakePackageKit&) = delete;
    FakePackageKit& operator=(const FakePackageKit&) = delete;

    [[nodiscard]] GDBusConnection* connection() const { return connection_.get(); }

    Packages installed{{1, "thermopix;1.2;amd64;installed"}};
    Packages updates;
    /// Everything in one signal, or one package a signal.
    bool isPlural = false;
    std::uint32_t age = 18000;
    /// Of the question of that name.
    std::map<std::string, Fault> faults;
    /// Methods and their parameters, printed.
    std::vector<std::string> calls;

private:
    static void answerCall(GDBusConnection* connection, const gchar* sender, const gchar* path, const gchar* interface,
                           const gchar* method, GVariant* parameters, GDBusMethodInvocation* invocation, gpointer self);
    void answer(const std::string& path, const std::string& method, GDBusMethodInvocation* invocation);
    void answerQuestion(const std::string& path, const Packages& packages, Fault fault,
                        GDBusMethodInvocation* invocation);
    void list(GDBusConnection* from, const std::string& path, const Packages& packages, std::uint32_t exit) const;
    void leave();

    GObjectHandle<GDBusConnection> connection_;
    GNodeInfoHandle description_;
    int transactions_ = 0;
};

}  // namespace thermopix
