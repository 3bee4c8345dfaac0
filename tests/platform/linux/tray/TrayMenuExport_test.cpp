#include "platform/linux/tray/TrayMenuExport.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/glib/GLibMainLoop.h"
#include "platform/linux/tray/TestBus.h"
#include "platform/linux/tray/TestMenuSource.h"
#include "platform/linux/tray/TestTrayHost.h"

namespace thermopix {
namespace {

constexpr const char* menuPath = "/MenuBar";

MenuItem titled(MenuItemKind kind, std::string title) {
    MenuItem item;
    item.kind = kind;
    item.title = std::move(title);
    return item;
}

/// A menu on the bus and a client that has read it.
class TrayMenuExportTest : public testing::Test {
protected:
    TrayMenuExportTest() {
        EXPECT_TRUE(runUntil([this] { return isReady_; }));
        EXPECT_TRUE(menu_->isReady());
        settle(client_.connection());
        client_.menuSignals.clear();
        entries_ = layout().children;
    }

    static GVariant* wholeLayout() {
        return g_variant_new("(ii@as)", 0, -1, g_variant_new_array(G_VARIANT_TYPE_STRING, nullptr, 0));
    }

    TestReply call(const char* method, GVariant* parameters) {
        return callFrom(client_.connection(), g_dbus_connection_get_unique_name(TestBus::instance().session()),
                        menuPath, "com.canonical.dbusmenu", method, parameters);
    }

    TestMenuEntry layout() {
        const auto reply = call("GetLayout", wholeLayout());
        return TestMenuEntry::read(reply.value.get());
    }

    void event(std::int32_t id, const char* kind = "clicked") {
        static_cast<void>(call("Event", g_variant_new("(isvu)", id, kind, g_variant_new_int32(0), 0U)));
        settle(client_.connection());
    }

    [[nodiscard]] std::int32_t id(std::size_t index) const { return entries_[index].id; }

    TestTrayHost client_;
    TestMenuSource source_;
    GLibMainLoop loop_;
    bool isReady_ = false;
    std::optional<TrayMenuExport> menu_{std::in_place, TestBus::instance().session(), menuPath, source_,
                                        loop_,         [this] { isReady_ = true; }};
    std::vector<TestMenuEntry> entries_;
};

using Properties = std::map<std::string, std::string>;

TEST_F(TrayMenuExportTest, EveryKindOfItemHasItsProperties) {
    ASSERT_EQ(entries_.size(), 9U);
    EXPECT_EQ(entries_[TestMenuSource::reading].properties, (Properties{{"label", "'72°C'"}, {"enabled", "false"}}));
    EXPECT_EQ(entries_[TestMenuSource::firstLine].properties,
              (Properties{{"type", "'separator'"}, {"enabled", "false"}}));
    EXPECT_EQ(entries_[TestMenuSource::header].properties, (Properties{{"label", "'Unit'"}, {"enabled", "false"}}));
    EXPECT_EQ(entries_[TestMenuSource::celsius].properties, (Properties{{"label", "'Celsius'"},
                                                                        {"toggle-type", "'radio'"},
                                                                        {"toggle-state", "1"},
                                                                        {"x-thermopix-id", "'menu.unit.celsius'"}}));
    EXPECT_EQ(entries_[TestMenuSource::fahrenheit].property("toggle-state"), "0");
    EXPECT_EQ(entries_[TestMenuSource::quit].properties, (Properties{{"label", "'Quit Thermopix'"}}));
    EXPECT_EQ(entries_[TestMenuSource::hidden].properties, (Properties{{"label", "'Hidden'"}, {"visible", "false"}}));
}

TEST_F(TrayMenuExportTest, TitlesHaveNoMnemonicsAndAreRepaired) {
    EXPECT_EQ(entries_[TestMenuSource::detail].property("label"), "'coretemp__package & nvme__0'");
    source_.edit(TestMenuSource::reading, [](MenuItem& item) { item.title = "7\xff"; });
    EXPECT_EQ(layout().children[TestMenuSource::reading].property("label"), "'7\xef\xbf\xbd'");
}

TEST_F(TrayMenuExportTest, AChangeCrossesTheBusAsThePropertiesThatDiffer) {
    source_.edit(TestMenuSource::reading, [](MenuItem& item) { item.title = "73°C"; });
    ASSERT_TRUE(runUntil([this] { return !client_.menuSignals.empty(); }));
    EXPECT_EQ(client_.menuSignals, std::vector<std::string>{"ItemsPropertiesUpdated"});
    EXPECT_EQ(client_.lastMenuSignal,
              "([(" + std::to_string(id(TestMenuSource::reading)) + ", {'label': <'73°C'>})], [])");
}

TEST_F(TrayMenuExportTest, AnUnchangedMenuCrossesNoBus) {
    const auto before = TestBus::instance().sentMessages();
    source_.menu.send(source_.menu.value());
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
    EXPECT_EQ(TestBus::instance().sentMessages(), before);
    settle(client_.connection());
    EXPECT_TRUE(client_.menuSignals.empty());
}

TEST_F(TrayMenuExportTest, ItemsAppearAndDisappearInPlace) {
    source_.edit(TestMenuSource::hidden, [](MenuItem& item) { item.isHidden = false; });
    source_.edit(TestMenuSource::quit, [](MenuItem& item) { item.isEnabled = false; });
    const auto after = layout().children;
    EXPECT_NE(after[TestMenuSource::hidden].property("visible"), "false");
    EXPECT_EQ(after[TestMenuSource::quit].property("enabled"), "false");
    EXPECT_EQ(after[TestMenuSource::hidden].id, id(TestMenuSource::hidden));
}

TEST_F(TrayMenuExportTest, AMenuMayGrowAndShrink) {
    Menu longer = TestMenuSource::sample();
    longer.items.emplace_back();
    longer.items.back().title = "New";
    source_.menu.send(longer);
    ASSERT_EQ(layout().children.size(), 10U);
    EXPECT_EQ(layout().children.back().property("label"), "'New'");
    longer.items.resize(2);
    source_.menu.send(longer);
    EXPECT_EQ(layout().children.size(), 2U);
    source_.menu.send(Menu{});
    EXPECT_TRUE(layout().children.empty());
}

TEST_F(TrayMenuExportTest, AnItemMayBecomeOneOfAnotherKind) {
    source_.edit(TestMenuSource::celsius, [](MenuItem& item) { item = titled(MenuItemKind::separator, ""); });
    source_.edit(TestMenuSource::firstLine, [](MenuItem& item) { item = titled(MenuItemKind::action, "Line"); });
    const auto after = layout().children;
    EXPECT_EQ(after[TestMenuSource::celsius].property("type"), "'separator'");
    EXPECT_EQ(after[TestMenuSource::celsius].property("toggle-type"), "");
    EXPECT_EQ(after[TestMenuSource::firstLine].property("label"), "'Line'");
    EXPECT_NE(after[TestMenuSource::firstLine].property("type"), "'separator'");
}

TEST_F(TrayMenuExportTest, ASubmenuHasItsItems) {
    source_.edit(TestMenuSource::quit, [](MenuItem& item) {
        item = titled(MenuItemKind::submenu, "More");
        item.submenu.items = {titled(MenuItemKind::action, "Inner")};
    });
    const auto more = layout().children[TestMenuSource::quit];
    EXPECT_EQ(more.property("children-display"), "'submenu'");
    ASSERT_EQ(more.children.size(), 1U);
    EXPECT_EQ(more.children[0].property("label"), "'Inner'");
    event(more.children[0].id);
    ASSERT_TRUE(runUntil([this] { return !source_.performed.empty(); }));
    EXPECT_EQ(source_.performed[0].title, "Inner");
}

TEST_F(TrayMenuExportTest, MarksAreBroughtUpToDateBeforeTheMenuIsShown) {
    source_.onOpening = [this] {
        source_.edit(TestMenuSource::celsius, [](MenuItem& item) { item.isOn = false; });
        source_.edit(TestMenuSource::fahrenheit, [](MenuItem& item) { item.isOn = true; });
    };
    EXPECT_EQ(call("AboutToShow", g_variant_new("(i)", 0)).error, "");
    ASSERT_TRUE(runUntil([this] { return source_.openings == 1; }));
    const auto after = layout().children;
    EXPECT_EQ(after[TestMenuSource::celsius].property("toggle-state"), "0");
    EXPECT_EQ(after[TestMenuSource::fahrenheit].property("toggle-state"), "1");
    ASSERT_TRUE(runUntil([this] { return !client_.menuSignals.empty(); }));
    EXPECT_EQ(client_.menuSignals, std::vector<std::string>{"ItemsPropertiesUpdated"});
}

TEST_F(TrayMenuExportTest, TraysMayAskInGroups) {
    GVariantBuilder ids;
    g_variant_builder_init(&ids, G_VARIANT_TYPE("ai"));
    g_variant_builder_add(&ids, "i", 0);
    EXPECT_EQ(call("AboutToShowGroup", g_variant_new("(ai)", &ids)).error, "");
    EXPECT_TRUE(runUntil([this] { return source_.openings == 1; }));
}

TEST_F(TrayMenuExportTest, AClickPerformsAChoosableItemAndMayChangeTheMenu) {
    for (const auto index :
         {TestMenuSource::reading, TestMenuSource::firstLine, TestMenuSource::header, TestMenuSource::hidden}) {
        event(id(index));
    }
    const auto chosen = source_.menu.value().items[TestMenuSource::fahrenheit];
    source_.onPerform = [this] { source_.menu.send(Menu{}); };
    event(id(TestMenuSource::fahrenheit));
    ASSERT_TRUE(runUntil([this] { return !source_.performed.empty(); }));
    EXPECT_EQ(source_.performed, std::vector<MenuItem>{chosen});
    EXPECT_TRUE(layout().children.empty());
}

TEST_F(TrayMenuExportTest, UnknownItemsAndOtherEventsAreIgnoredAndCallsOfTheWrongTypeRefused) {
    for (const std::int32_t unknown : {-1, 4711, std::numeric_limits<std::int32_t>::min()}) {
        event(unknown);
    }
    event(0);
    event(id(TestMenuSource::quit), "hovered");
    event(id(TestMenuSource::quit), "");
    EXPECT_TRUE(source_.performed.empty());
    EXPECT_NE(call("Event", g_variant_new("(s)", "clicked")).error, "");
    EXPECT_NE(call("GetLayout", g_variant_new("(s)", "all")).error, "");
    EXPECT_NE(call("AboutToShow", nullptr).error, "");
    EXPECT_NE(call("NoSuchMethod", nullptr).error, "");
    EXPECT_EQ(layout().children.size(), entries_.size());
}

TEST_F(TrayMenuExportTest, AFloodOfEventsIsServed) {
    constexpr int flood = 500;
    for (int i = 0; i < flood; ++i) {
        g_dbus_connection_call(
            client_.connection(), g_dbus_connection_get_unique_name(TestBus::instance().session()), menuPath,
            "com.canonical.dbusmenu", i % 2 == 0 ? "AboutToShow" : "Event",
            i % 2 == 0 ? g_variant_new("(i)", 0) : g_variant_new("(isvu)", i, "clicked", g_variant_new_int32(0), 0U),
            nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
    }
    ASSERT_TRUE(runUntil([this] { return source_.openings == flood / 2; }));
    EXPECT_EQ(layout().children.size(), entries_.size());
}

TEST_F(TrayMenuExportTest, AMenuThatIsGoneAnswersNoMore) {
    static_cast<void>(call("AboutToShow", g_variant_new("(i)", 0)));
    menu_.reset();
    source_.menu.send(Menu{});
    settle(client_.connection());
    EXPECT_NE(call("GetLayout", wholeLayout()).error, "");
}

}  // namespace
}  // namespace thermopix
