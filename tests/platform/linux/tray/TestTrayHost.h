#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/linux/tray/TestBus.h"
#include "tray/TrayPictures.h"

namespace thermopix {

/// An entry of a menu as it comes over the bus; properties as `g_variant_print` writes them.
struct TestMenuEntry {
    std::int32_t id = -1;
    std::map<std::string, std::string> properties;
    std::vector<TestMenuEntry> children;

    /// The root in the reply of `GetLayout`; empty for none.
    static TestMenuEntry read(GVariant* reply);

    [[nodiscard]] std::string property(const std::string& name) const {
        const auto found = properties.find(name);
        return found == properties.end() ? std::string() : found->second;
    }
};

/// A tray: watcher, host and menu client on a connection of its own. It leaves the bus when destroyed.
class TestTrayHost {
public:
    enum class Draws { atOnce, notYet };

    explicit TestTrayHost(Draws draws = Draws::atOnce);
    ~TestTrayHost();
    TestTrayHost(const TestTrayHost&) = delete;
    TestTrayHost& operator=(const TestTrayHost&) = delete;

    struct Registration {
        std::string sender;
        std::string reference;
    };
    /// Every call of `RegisterStatusNotifierItem`, in order.
    std::vector<Registration> registrations;
    /// The signals of items, and of menus, in order.
    std::vector<std::string> itemSignals;
    std::vector<std::string> menuSignals;
    /// The parameters of the latest menu signal, printed.
    std::string lastMenuSignal;
    bool refusesItems = false;
    /// Sent instead of a boolean when not empty.
    std::string wrongHostAnswer;

    [[nodiscard]] GDBusConnection* connection() const { return connection_.get(); }

    void startDrawing();
    void stopDrawing();

    /// Waits for the `count`th registration, and for what it sets off.
    [[nodiscard]] bool waitForRegistration(std::size_t count = 1);

    /// The item of the latest registration, found as trays find it.
    [[nodiscard]] std::string itemBusName() const;
    [[nodiscard]] std::string itemPath() const;

    [[nodiscard]] TestReply callItem(const char* method, GVariant* parameters) const;
    [[nodiscard]] TestReply callMenu(const char* method, GVariant* parameters) const;

    /// A property of the item; null when it has none of that name.
    [[nodiscard]] GVariantHandle property(const char* name) const;
    [[nodiscard]] std::string text(const char* name) const;
    [[nodiscard]] std::vector<TrayPicture> pictures() const;
    /// The introspection data of the item.
    [[nodiscard]] std::string introspection() const;

    [[nodiscard]] TestMenuEntry menu() const;
    /// The entry of the menu that is called so.
    [[nodiscard]] TestMenuEntry entry(const std::string& label) const;
    void aboutToShowMenu() const;
    void click(std::int32_t menuEntry) const;

private:
    void emit(const char* signal);

    GObjectHandle<GDBusConnection> connection_;
    bool draws_;
};

}  // namespace thermopix
