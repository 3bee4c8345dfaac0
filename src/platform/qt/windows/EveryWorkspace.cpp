#include "platform/qt/windows/EveryWorkspace.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace thermopix {

namespace {

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
    const auto request = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    auto* reply = xcb_intern_atom_reply(connection, request, nullptr);
    const xcb_atom_t result = reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : reply->atom;
    std::free(reply);
    return result;
}

}  // namespace

void standOnEveryWorkspace(QWidget& window) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* connection = x11 == nullptr ? nullptr : x11->connection();
    if (connection == nullptr) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window.winId());
    constexpr std::uint32_t everyWorkspace = 0xFFFFFFFF;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, atom(connection, "_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL,
                        32, 1, &everyWorkspace);
    const std::array<xcb_atom_t, 3> states{atom(connection, "_NET_WM_STATE_STICKY"),
                                           atom(connection, "_NET_WM_STATE_SKIP_TASKBAR"),
                                           atom(connection, "_NET_WM_STATE_SKIP_PAGER")};
    xcb_change_property(connection, XCB_PROP_MODE_APPEND, id, atom(connection, "_NET_WM_STATE"), XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(states.size()), states.data());
}

}  // namespace thermopix
