#pragma once

#include <string>

#include "platform/linux/tray/TestBus.h"

namespace thermopix {

/// A service that holds one setting of the desktop and announces its changes, on a connection of its own.
class TestDesktopSettings {
public:
    struct Service {
        const char* busName;
        const char* objectPath;
        const char* interfaceName;
        const char* readMethod;
        const char* changeSignal;
        const char* place;
        const char* setting;
    };
    static constexpr Service portal{"org.freedesktop.portal.Desktop",
                                    "/org/freedesktop/portal/desktop",
                                    "org.freedesktop.portal.Settings",
                                    "Read",
                                    "SettingChanged",
                                    "org.freedesktop.appearance",
                                    "color-scheme"};
    static constexpr Service xfconf{"org.xfce.Xfconf", "/org/xfce/Xfconf", "org.xfce.Xfconf",  "GetProperty",
                                    "PropertyChanged", "xfce4-panel",      "/panels/dark-mode"};

    TestDesktopSettings(const Service& service, GVariant* value);
    ~TestDesktopSettings();
    TestDesktopSettings(const TestDesktopSettings&) = delete;
    TestDesktopSettings& operator=(const TestDesktopSettings&) = delete;

    void change(GVariant* value);
    /// Announces another setting, or anything else.
    void announce(GVariant* parameters);

    std::int64_t readCount = 0;

private:
    Service service_;
    GVariantHandle value_;
    GObjectHandle<GDBusConnection> connection_;
};

}  // namespace thermopix
