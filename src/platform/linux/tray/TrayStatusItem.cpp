#include "platform/linux/tray/TrayStatusItem.h"

#include <fmt/format.h>
#include <unistd.h>

#include <utility>

#include "base/Unicode.h"
#include "platform/linux/bus/BusCall.h"
#include "platform/linux/tray/TrayHostWatch.h"

namespace thermopix {
namespace {

constexpr const char* interfaceName = "org.kde.StatusNotifierItem";
constexpr std::string_view itemPath = "/StatusNotifierItem";
constexpr std::string_view ayatanaItemPath = "/org/ayatana/NotificationItem/thermopix";
constexpr std::string_view itemMenuPath = "/MenuBar";
constexpr std::string_view noMenuPath = "/NO_DBUSMENU";

/// Trays that find `Activate` call it at a left click, or wait whether the click becomes a double one; so it is there
/// only for those that open no menu by themselves.
constexpr const char* interfaceXml = R"xml(<node><interface name="org.kde.StatusNotifierItem">
{}
<method name="ContextMenu"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="SecondaryActivate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="Scroll"><arg name="delta" type="i" direction="in"/><arg name="orientation" type="s" direction="in"/></method>
<method name="ProvideXdgActivationToken"><arg name="token" type="s" direction="in"/></method>
<property name="Category" type="s" access="read"/>
<property name="Id" type="s" access="read"/>
<property name="Title" type="s" access="read"/>
<property name="Status" type="s" access="read"/>
<property name="WindowId" type="i" access="read"/>
<property name="Menu" type="o" access="read"/>
<property name="ItemIsMenu" type="b" access="read"/>
<property name="IconName" type="s" access="read"/>
<property name="IconThemePath" type="s" access="read"/>
<property name="IconPixmap" type="a(iiay)" access="read"/>
<property name="IconAccessibleDesc" type="s" access="read"/>
<property name="OverlayIconName" type="s" access="read"/>
<property name="OverlayIconPixmap" type="a(iiay)" access="read"/>
<property name="AttentionIconName" type="s" access="read"/>
<property name="AttentionIconPixmap" type="a(iiay)" access="read"/>
<property name="AttentionMovieName" type="s" access="read"/>
<property name="AttentionAccessibleDesc" type="s" access="read"/>
<property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
<signal name="NewTitle"/>
<signal name="NewIcon"/>
<signal name="NewAttentionIcon"/>
<signal name="NewOverlayIcon"/>
<signal name="NewToolTip"/>
<signal name="NewStatus"><arg name="status" type="s"/></signal>
</interface></node>)xml";

constexpr const char* activateXml =
    R"xml(<method name="Activate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>)xml";

GNodeInfoHandle describedInterface(std::string_view activate) {
    return GNodeInfoHandle(
        g_dbus_node_info_new_for_xml(fmt::format(fmt::runtime(interfaceXml), activate).c_str(), nullptr));
}

GDBusInterfaceInfo* interfaceInfo(TrayClick click) {
    static const GNodeInfoHandle opensMenu = describedInterface("");
    static const GNodeInfoHandle activates = describedInterface(activateXml);
    return (click == TrayClick::activates ? activates : opensMenu)->interfaces[0];
}

constexpr const char* propertyValues = R"({
'Category': <'Hardware'>,
'Id': <%s>,
'Title': <%s>,
'Status': <'Active'>,
'WindowId': <0>,
'Menu': <%o>,
'ItemIsMenu': <true>,
'IconName': <''>,
'IconThemePath': <''>,
'IconPixmap': <%@a(iiay)>,
'IconAccessibleDesc': <%s>,
'OverlayIconName': <''>,
'OverlayIconPixmap': <@a(iiay) []>,
'AttentionIconName': <''>,
'AttentionIconPixmap': <@a(iiay) []>,
'AttentionMovieName': <''>,
'AttentionAccessibleDesc': <''>,
'ToolTip': <('', @a(iiay) [], %s, %s)>})";

}  // namespace

TrayStatusItem::TrayStatusItem(GDBusConnection* connection, const TrayOptions& options, std::int32_t number,
                               Published<std::optional<TrayPresentation>>& presentation, MainLoop& mainLoop,
                               DiagnosticLog& log)
    : connection_(connection),
      options_(options),
      number_(number),
      mainLoop_(mainLoop),
      log_(log),
      busName_(fmt::format("{}-{}-{}", interfaceName, getpid(), number)),
      title_(options.title) {
    nameSubscription_ = ownName(connection, busName_.c_str(), [this](NameOwnership ownership) {
        ownership_ = ownership;
        update();
    });
    presentationSubscription_ = presentation.subscribe([this](const std::optional<TrayPresentation>& value) {
        presentation_ = value;
        update();
    });
}

TrayStatusItem::~TrayStatusItem() {
    unexportObject();
}

void TrayStatusItem::setImage(const StatusItemImage& image) {
    if (image == image_) {
        return;
    }
    image_ = image;
    showTitle();
    update();
}

void TrayStatusItem::setMenu(MenuSource& menu) {
    menu_.reset();
    properties_.reset();
    menu_ =
        std::make_unique<TrayMenuExport>(connection_, numbered(itemMenuPath), menu, mainLoop_, [this] { update(); });
}

void TrayStatusItem::update() {
    if (!presentation_) {
        registration_.clear();
        registering_.cancel();
        return;
    }
    if (!image_) {
        return;
    }
    showPictures();
    exportObject(presentation_->host);
    registerWithWatcher();
}

void TrayStatusItem::exportObject(const TrayHost& host) {
    const std::string path = numbered(host.registration == TrayRegistration::ayatanaPath ? ayatanaItemPath : itemPath);
    if (objectId_ != 0 && path == objectPath_ && host.click == click_) {
        return;
    }
    unexportObject();
    objectPath_ = path;
    click_ = host.click;
    static constexpr GDBusInterfaceVTable table{
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* method, GVariant* parameters,
           GDBusMethodInvocation* invocation, gpointer item) {
            static_cast<const TrayStatusItem*>(item)->called(method, parameters);
            g_dbus_method_invocation_return_value(invocation, nullptr);
        },
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* name, GError**, gpointer item) {
            return g_variant_lookup_value(static_cast<TrayStatusItem*>(item)->properties(), name, nullptr);
        },
        nullptr,
        {}};
    GErrorSlot error;
    objectId_ = g_dbus_connection_register_object(connection_, objectPath_.c_str(), interfaceInfo(click_), &table, this,
                                                  nullptr, error.out());
    if (objectId_ == 0) {
        log_.diag("desktop", fmt::format("the status item cannot be offered: {}", error.message()));
    }
}

void TrayStatusItem::unexportObject() {
    if (objectId_ != 0) {
        g_dbus_connection_unregister_object(connection_, objectId_);
        objectId_ = 0;
    }
    registration_.clear();
}

void TrayStatusItem::registerWithWatcher() {
    if (!ownership_ || (menu_ != nullptr && !menu_->isReady())) {
        return;
    }
    // A bus name stands for the first item only, whose path every tray knows.
    const bool isNamed = number_ == 1 && presentation_->host.registration == TrayRegistration::busName;
    const std::string reference = !isNamed                             ? objectPath_
                                  : ownership_ == NameOwnership::owned ? busName_
                                                                       : g_dbus_connection_get_unique_name(connection_);
    const std::string registration = presentation_->watcher + " " + reference;
    if (registration == registration_) {
        return;
    }
    registration_ = registration;
    registering_ = callMethod(connection_,
                              {presentation_->watcher.c_str(), TrayHostWatch::watcherPath, TrayHostWatch::watcherName,
                               "RegisterStatusNotifierItem"},
                              g_variant_new("(s)", reference.c_str()), "()", [this](GVariant* reply) {
                                  if (reply == nullptr) {
                                      log_.diag("desktop", "the status notifier watcher does not take the item");
                                  }
                              });
}

void TrayStatusItem::showPictures() {
    const TrayPictureSet set = presentation_->host.pictures;
    GVariantHandle pictures = cache_.pictures(trayArt(*image_, shape(set)), set, presentation_->ink);
    if (pictures == pictures_) {
        return;
    }
    pictures_ = std::move(pictures);
    properties_.reset();
    emit("NewIcon");
}

void TrayStatusItem::showTitle() {
    std::string title = repairedUtf8(image_->readout.description.value_or(""));
    if (title.empty()) {
        title = options_.title;
    }
    const bool isNewTitle = title != title_;
    if (!isNewTitle && image_->note == note_) {
        return;
    }
    title_ = std::move(title);
    note_ = image_->note;
    properties_.reset();
    if (isNewTitle) {
        emit("NewTitle");
    }
    emit("NewToolTip");
}

void TrayStatusItem::emit(const char* signal) {
    if (!registration_.empty()) {
        g_dbus_connection_emit_signal(connection_, nullptr, objectPath_.c_str(), interfaceName, signal, nullptr,
                                      nullptr);
    }
}

void TrayStatusItem::called(std::string_view method, GVariant* parameters) const {
    if (method == "ContextMenu" || method == "Activate") {
        gint32 x = 0;
        gint32 y = 0;
        g_variant_get(parameters, "(ii)", &x, &y);
        options_.showPopup(x, y);
    } else if (method == "ProvideXdgActivationToken" && options_.useActivationToken) {
        const char* token = nullptr;
        g_variant_get(parameters, "(&s)", &token);
        options_.useActivationToken(token);
    }
}

GVariant* TrayStatusItem::properties() {
    if (properties_) {
        return properties_.get();
    }
    GVariant* pictures = pictures_ ? pictures_.get() : g_variant_new_array(G_VARIANT_TYPE("(iiay)"), nullptr, 0);
    const std::string menu = menu_ ? numbered(itemMenuPath) : std::string(noMenuPath);
    // Trays read markup in tool tips.
    const GStringHandle toolTip(g_markup_escape_text(title_.c_str(), -1));
    const GStringHandle note(g_markup_escape_text(note_.c_str(), -1));
    properties_.reset(
        g_variant_ref_sink(g_variant_new_parsed(propertyValues, options_.id.c_str(), title_.c_str(), menu.c_str(),
                                                pictures, title_.c_str(), toolTip.get(), note.get())));
    return properties_.get();
}

std::string TrayStatusItem::numbered(std::string_view path) const {
    return number_ == 1 ? std::string(path) : fmt::format("{}/{}", path, number_);
}

}  // namespace thermopix
