#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Published.h"
#include "platform/linux/bus/BusNotice.h"
#include "platform/linux/glib/GLibHandles.h"
#include "platform/linux/tray/TrayMenuExport.h"
#include "platform/linux/tray/TrayOptions.h"
#include "platform/linux/tray/TrayPictureCache.h"
#include "platform/linux/tray/TrayPresentation.h"
#include "shell/StatusItem.h"
#include "system/DiagnosticLog.h"

namespace thermopix {

/// One org.kde.StatusNotifierItem. It makes itself known to each watcher once there is a picture, and says what has
/// changed and nothing more. Main thread.
class TrayStatusItem final : public StatusItem {
public:
    /// `number` tells the items of this process apart, from 1. All references outlive the item.
    TrayStatusItem(GDBusConnection* connection, const TrayOptions& options, std::int32_t number,
                   Published<std::optional<TrayPresentation>>& presentation, DiagnosticLog& log);
    ~TrayStatusItem() override;
    TrayStatusItem(const TrayStatusItem&) = delete;
    TrayStatusItem& operator=(const TrayStatusItem&) = delete;

    [[nodiscard]] bool hasButton() const override { return true; }
    void setImage(const StatusItemImage& image) override;
    void setMenu(MenuSource& menu) override;

private:
    struct Properties;

    void update();
    void exportObject(const TrayHost& host);
    void unexportObject();
    void registerWithWatcher();
    void showPictures();
    void showTitle();
    void emit(const char* signal);
    void called(std::string_view method, GVariant* parameters) const;
    [[nodiscard]] std::string numbered(std::string_view path) const;
    [[nodiscard]] std::string menuPath() const;

    GDBusConnection* connection_;
    const TrayOptions& options_;
    std::int32_t number_;
    DiagnosticLog& log_;
    std::string busName_;

    std::optional<StatusItemImage> image_;
    std::string title_;
    TrayPictureCache cache_;
    GVariantHandle pictures_;
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
