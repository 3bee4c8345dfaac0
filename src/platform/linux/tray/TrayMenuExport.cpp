#include "platform/linux/tray/TrayMenuExport.h"

#include <libdbusmenu-glib/dbusmenu-glib.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "base/Unicode.h"
#include "platform/linux/bus/BusCall.h"

namespace thermopix {
namespace {

constexpr const char* identifierProperty = "x-thermopix-id";

/// Menus on the bus take an underscore as the mark of a mnemonic, and two of them as one.
std::string label(const std::string& title) {
    std::string escaped;
    for (const char character : repairedUtf8(title)) {
        escaped.append(character == '_' ? 2 : 1, character);
    }
    return escaped;
}

bool isChoosable(const MenuItem& item) {
    return item.kind == MenuItemKind::action && item.isEnabled && !item.isHidden;
}

void setText(DbusmenuMenuitem* handle, const char* property, const std::string& text) {
    if (text.empty()) {
        dbusmenu_menuitem_property_remove(handle, property);
    } else {
        dbusmenu_menuitem_property_set(handle, property, text.c_str());
    }
}

/// Sets every property that an item can have; those that stay as they are cross no bus.
void describe(DbusmenuMenuitem* handle, const MenuItem& item) {
    const bool isSeparator = item.kind == MenuItemKind::separator;
    const bool isInert = item.kind == MenuItemKind::information || item.kind == MenuItemKind::sectionHeader;
    setText(handle, DBUSMENU_MENUITEM_PROP_TYPE, isSeparator ? DBUSMENU_CLIENT_TYPES_SEPARATOR : "");
    dbusmenu_menuitem_property_set_bool(handle, DBUSMENU_MENUITEM_PROP_VISIBLE, item.isHidden ? FALSE : TRUE);
    dbusmenu_menuitem_property_set_bool(handle, DBUSMENU_MENUITEM_PROP_ENABLED,
                                        item.isEnabled && !isInert ? TRUE : FALSE);
    setText(handle, DBUSMENU_MENUITEM_PROP_LABEL, isSeparator ? "" : label(item.title));
    setText(handle, identifierProperty, repairedUtf8(item.identifier));
    if (item.representedValue) {
        dbusmenu_menuitem_property_set(handle, DBUSMENU_MENUITEM_PROP_TOGGLE_TYPE, DBUSMENU_MENUITEM_TOGGLE_RADIO);
        dbusmenu_menuitem_property_set_int(
            handle, DBUSMENU_MENUITEM_PROP_TOGGLE_STATE,
            item.isOn ? DBUSMENU_MENUITEM_TOGGLE_STATE_CHECKED : DBUSMENU_MENUITEM_TOGGLE_STATE_UNCHECKED);
    } else {
        dbusmenu_menuitem_property_remove(handle, DBUSMENU_MENUITEM_PROP_TOGGLE_TYPE);
        dbusmenu_menuitem_property_remove(handle, DBUSMENU_MENUITEM_PROP_TOGGLE_STATE);
    }
}

/// An item on the bus and what it stands for.
class Node {
public:
    explicit Node(MenuSource& source) : source_(source) {
        g_signal_connect(handle_.get(), DBUSMENU_MENUITEM_SIGNAL_ITEM_ACTIVATED, G_CALLBACK(&Node::activated), this);
    }
    ~Node() { g_signal_handlers_disconnect_by_data(handle_.get(), this); }
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    [[nodiscard]] DbusmenuMenuitem* handle() const { return handle_.get(); }

    void show(const MenuItem& item) {
        if (item == value_) {
            return;
        }
        value_ = item;
        describe(handle(), value_);
        showItems(value_.submenu);
    }

    void showItems(const Menu& menu) {
        while (children_.size() > menu.items.size()) {
            dbusmenu_menuitem_child_delete(handle(), children_.back()->handle());
            children_.pop_back();
        }
        for (std::size_t i = 0; i < menu.items.size(); ++i) {
            if (i < children_.size()) {
                children_[i]->show(menu.items[i]);
            } else {
                children_.push_back(std::make_unique<Node>(source_));
                children_.back()->show(menu.items[i]);
                dbusmenu_menuitem_child_append(handle(), children_.back()->handle());
            }
        }
    }

private:
    /// What the root stays: nothing that can be chosen.
    static MenuItem unshown() {
        MenuItem item;
        item.kind = MenuItemKind::submenu;
        return item;
    }

    static void activated(DbusmenuMenuitem* /*handle*/, guint /*timestamp*/, gpointer data) {
        // Copies, because the choice may change the menu.
        const auto& self = *static_cast<const Node*>(data);
        const MenuItem item = self.value_;
        if (isChoosable(item)) {
            self.source_.perform(item);
        }
    }

    MenuSource& source_;
    GObjectHandle<DbusmenuMenuitem> handle_{dbusmenu_menuitem_new()};
    MenuItem value_ = unshown();
    std::vector<std::unique_ptr<Node>> children_;
};

}  // namespace

struct TrayMenuExport::Tree {
    Tree(const std::string& objectPath, MenuSource& source)
        : openingSource(&source), root(source), server(dbusmenu_server_new(objectPath.c_str())) {
        g_signal_connect(root.handle(), DBUSMENU_MENUITEM_SIGNAL_ABOUT_TO_SHOW, G_CALLBACK(&aboutToShow),
                         openingSource);
        menu = source.observe([this](const Menu& value) { root.showItems(value); });
        dbusmenu_server_set_root(server.get(), root.handle());
    }
    ~Tree() { g_signal_handlers_disconnect_by_data(root.handle(), openingSource); }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    static gboolean aboutToShow(DbusmenuMenuitem* /*root*/, gpointer source) {
        static_cast<MenuSource*>(source)->menuWillOpen();
        return FALSE;
    }

    MenuSource* openingSource;
    Node root;
    GObjectHandle<DbusmenuServer> server;
    Subscription menu;
};

TrayMenuExport::TrayMenuExport(GDBusConnection* connection, const std::string& objectPath, MenuSource& source,
                               MainLoop& mainLoop, std::function<void()> onReady)
    : connection_(connection),
      objectPath_(objectPath),
      mainLoop_(mainLoop),
      onReady_(std::move(onReady)),
      pause_(firstPause),
      tree_(std::make_unique<Tree>(objectPath, source)) {
    awaitExport();
}

TrayMenuExport::~TrayMenuExport() = default;

/// The library finds the bus in the background and does not tell when it has, so the menu itself is asked.
void TrayMenuExport::awaitExport() {
    waiting_ = readProperty(connection_, g_dbus_connection_get_unique_name(connection_), objectPath_.c_str(),
                            "com.canonical.dbusmenu", "Version", [this](GVariant* version) {
                                if (version == nullptr) {
                                    waiting_ = mainLoop_.oneShot(pause_, [this] { awaitExport(); });
                                    pause_ = std::min(pause_ * 2, longestPause);
                                    return;
                                }
                                isReady_ = true;
                                onReady_();
                            });
}

}  // namespace thermopix
