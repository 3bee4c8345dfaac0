#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Published.h"
#include "platform/linux/bus/BusNotice.h"
#include "platform/linux/glib/GLibHandles.h"
#include "platform/linux/tray/TrayMenuExport.h"
#include "platform/linux/tray/TrayPictureCache.h"
#include "shell/StatusItem.h"
#include "system/DiagnosticLog.h"
#include "system/MainLoop.h"
#include "tray/TrayHost.h"
#include "tray/TrayInk.h"

namespace thermopix {

struct TrayOptions {
    /// What the tray knows the item by, and its title until there is a reading.
    std::string id = "thermopix";
    std::string title = "Thermopix";
    /// Where `desktop.conf` is.
    std::filesystem::path settingsFolder;
    std::filesystem::path processRoot = "/proc";
    /// Shows the menu at a place on the screen, for trays that cannot show it themselves. Without it, a log line.
    std::function<void(std::int32_t x, std::int32_t y)> showPopup;
    /// Takes the token with which the next window may come to the front.
    std::function<void(std::string_view token)> useActivationToken;
};

/// Where and how status items are shown at present.
struct TrayPresentation {
    /// The unique bus name of the watcher.
    std::string watcher;
    TrayHost host;
    TrayInk ink;

    friend bool operator==(const TrayPresentation&, const TrayPresentation&) = default;
};

/// One org.kde.StatusNotifierItem. It makes itself known to each watcher once there is a picture, and says what has
/// changed and nothing more. Main thread.
class TrayStatusItem final : public StatusItem {
public:
    /// `number` tells the items of this process apart, from 1. All references outlive the item.
    TrayStatusItem(GDBusConnection* connection, const TrayOptions& options, std::int32_t number,
                   Published<std::optional<TrayPresentation>>& presentation, MainLoop& mainLoop, DiagnosticLog& log);
    ~TrayStatusItem() override;
    TrayStatusItem(const TrayStatusItem&) = delete;
    TrayStatusItem& operator=(const TrayStatusItem&) = delete;

    [[nodiscard]] bool hasButton() const override { return true; }
    void setImage(const StatusItemImage& image) override;
    void setMenu(MenuSource& menu) override;

private:
    void update();
    void exportObject(const TrayHost& host);
    void unexportObject();
    void registerWithWatcher();
    void showPictures();
    void showTitle();
    void emit(const char* signal);
    void called(std::string_view method, GVariant* parameters) const;
    /// What the item answers for each property, by name.
    [[nodiscard]] GVariant* properties();
    [[nodiscard]] std::string numbered(std::string_view path) const;

    GDBusConnection* connection_;
    const TrayOptions& options_;
    std::int32_t number_;
    MainLoop& mainLoop_;
    DiagnosticLog& log_;
    std::string busName_;

    std::optional<StatusItemImage> image_;
    std::string title_;
    std::string note_;
    TrayPictureCache cache_;
    GVariantHandle pictures_;
    /// What the item answers, all properties by name; empty since the last change.
    GVariantHandle properties_;
    std::unique_ptr<TrayMenuExport> menu_;

    std::optional<TrayPresentation> presentation_;
    std::optional<NameOwnership> ownership_;
    std::string objectPath_;
    TrayClick click_ = TrayClick::opensMenu;
    guint objectId_ = 0;
    /// The watcher that knows the item, and as what; empty while none does.
    std::string registration_;
    Subscription registering_;
    Subscription nameSubscription_;
    Subscription presentationSubscription_;
};

}  // namespace thermopix
