#include "messages/MessageCodec.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <variant>

#include "messages/Messages.h"

namespace thermopix {
namespace {

ViewNode nested(int depth) {
    ViewNode node;
    for (int i = 1; i < depth; ++i) {
        ViewNode parent;
        parent.children.push_back(std::move(node));
        node = std::move(parent);
    }
    return node;
}

template <typename Message, typename Read>
void expectReadAsWritten(const std::vector<Message>& messages, Read read) {
    ASSERT_EQ(messages.size(), std::variant_size_v<Message>);
    for (std::size_t i = 0; i < messages.size(); ++i) {
        ASSERT_EQ(messages[i].index(), i);
        const std::string line = MessageCodec::line(messages[i]);
        EXPECT_EQ(read(line), messages[i]) << line;
        EXPECT_EQ(line.find('\n'), std::string::npos);
    }
}

TEST(MessageCodec, ReadsEveryMessageAsItWasWritten) {
    expectReadAsWritten(Messages::requests(), MessageCodec::request);
    expectReadAsWritten(Messages::events(), MessageCodec::event);
}

TEST(MessageCodec, ReadsEveryCaseOfAnEnumeration) {
    Menu menu;
    for (const auto action : allCases<MenuAction>()) {
        menu.items.emplace_back().action = action;
    }
    const WindowRequest request = SetMainMenu{menu};
    const std::string line = MessageCodec::line(request);
    EXPECT_EQ(MessageCodec::request(line), request);
    EXPECT_NE(line.find(R"({"action":"openPreferencesItem"},{"action":"checkForUpdates"},)"), std::string::npos);
}

TEST(MessageCodec, LeavesOutWhatHasItsDefaultValue) {
    EXPECT_EQ(MessageCodec::line(WindowRequest(SetWindowContent{})), R"({"setWindowContent":{}})");
    EXPECT_EQ(MessageCodec::line(WindowRequest(ShowStrip{})), R"({"showStrip":{}})");
    EXPECT_EQ(MessageCodec::line(WindowRequest(HideStrip{})), R"({"hideStrip":{}})");
    EXPECT_EQ(MessageCodec::line(WindowEvent(Hello{})), R"({"hello":{}})");
    EXPECT_EQ(MessageCodec::request(R"({"setWindowContent":{}})"), WindowRequest(SetWindowContent{}));
    EXPECT_EQ(MessageCodec::event(R"({"hello":{}})"), WindowEvent(Hello{}));
}

TEST(MessageCodec, WritesMessagesThatAPersonCanRead) {
    EXPECT_EQ(MessageCodec::line(WindowRequest(ShowWindow{
                  1, {.title = "Thermopix Settings", .width = 720, .height = 520, .identifier = "prefs.window"}})),
              R"({"showWindow":{"window":1,"description":{"title":"Thermopix Settings","width":720.0,"height":520.0,)"
              R"("identifier":"prefs.window"}}})");
    StatusImage image;
    image.bitmap = PixelBitmap(3, 2, {Ink::full, Ink::none, Ink::ghost, Ink::none, Ink::full, Ink::full});
    image.cell = 2;
    image.isTemplate = true;
    image.description = "52°";
    EXPECT_EQ(MessageCodec::line(WindowRequest(SetStripReadout{image})),
              R"({"setStripReadout":{"image":{"bitmap":{"width":3,"rows":["#.:",".##"]},"cell":2.0,"isTemplate":true,)"
              R"("description":"52°"}}})");
    ViewNode toggle;
    toggle.kind = ViewKind::toggle;
    toggle.identifier = "prefs.showInDock";
    toggle.text = "Show in Dock";
    toggle.color = RoleColor{ColorRole::secondary};
    toggle.background.fill = Gradient{{255, 255, 255}, {230, 230, 230}};
    toggle.isOn = true;
    EXPECT_EQ(
        MessageCodec::line(WindowRequest(SetWindowContent{1, toggle})),
        R"({"setWindowContent":{"window":1,"root":{"kind":"toggle","identifier":"prefs.showInDock",)"
        R"("text":"Show in Dock","color":{"role":{"role":"secondary"}},"background":{"fill":{"gradient":)"
        R"({"top":{"red":255,"green":255,"blue":255},"bottom":{"red":230,"green":230,"blue":230}}}},"isOn":true}}})");
    EXPECT_EQ(MessageCodec::line(WindowEvent(ControlOperated{1, {.identifier = "prefs.showInDock", .value = "false"}})),
              R"({"controlOperated":{"window":1,"event":{"identifier":"prefs.showInDock","value":"false"}}})");
    EXPECT_EQ(MessageCodec::line(WindowEvent(StripMoved{{1600, 4}})),
              R"({"stripMoved":{"position":{"x":1600,"y":4}}})");
}

TEST(MessageCodec, KeepsBitmapsWithoutCells) {
    for (const auto& bitmap : {PixelBitmap(5, 0, {}), PixelBitmap(0, 3, {})}) {
        SetStripReadout readout;
        readout.image.bitmap = bitmap;
        const WindowRequest request = readout;
        EXPECT_EQ(MessageCodec::request(MessageCodec::line(request)), request);
    }
}

TEST(MessageCodec, ReplacesBytesThatAreNotText) {
    const std::string line = MessageCodec::line(WindowRequest(UseActivationToken{"a\xFFz"}));
    EXPECT_EQ(MessageCodec::request(line), WindowRequest(UseActivationToken{"a\uFFFDz"}));
}

TEST(MessageCodec, TakesAWholeNumberWhereAFractionMayStand) {
    EXPECT_EQ(MessageCodec::request(R"({"showWindow":{"description":{"width":720}}})"),
              WindowRequest(ShowWindow{0, {.title = {}, .width = 720, .height = 0, .identifier = {}}}));
}

TEST(MessageCodec, RefusesMalformedRequests) {
    for (const char* line : {
             "",
             " ",
             "null",
             "[]",
             "{}",
             "\"hideStrip\"",
             R"({"hideStrip":{})",
             R"({"hideStrip":{}} {"hideStrip":{}})",
             R"({"hideStrip":null})",
             R"({"hideStrip":[]})",
             R"({"hideStrip":{"now":true}})",
             R"({"hideStrip":{},"showStrip":{}})",
             R"({"hello":{}})",
             R"({"HideStrip":{}})",
             R"({"showStrip":{"position":null}})",
             R"({"showStrip":{"position":[1,2]}})",
             R"({"showStrip":{"position":{"x":1.5}}})",
             R"({"showStrip":{"position":{"x":"1"}}})",
             R"({"showStrip":{"position":{"x":2147483648}}})",
             R"({"showStrip":{"position":{"x":-2147483649}}})",
             R"({"showStrip":{"position":{"x":18446744073709551615}}})",
             R"({"showStrip":{"position":{"x":true}}})",
             R"({"orderWindowFront":{"window":-1}})",
             R"({"orderWindowFront":{"window":4294967296}})",
             R"({"orderWindowFront":{"window":18446744073709551615}})",
             R"({"showWindow":{"description":{"width":"720"}}})",
             R"({"showWindow":{"description":{"width":1e999}}})",
             R"({"showWindow":{"description":{"width":NaN}}})",
             R"({"showWindow":{"description":{"title":7}}})",
             R"({"setActivationPolicy":{"policy":"Regular"}})",
             R"({"setActivationPolicy":{"policy":0}})",
             R"({"setWindowContent":{"root":{"kind":"browser"}}})",
             R"({"setWindowContent":{"root":{"isOn":1}}})",
             R"({"setWindowContent":{"root":{"color":{}}}})",
             R"({"setWindowContent":{"root":{"color":{"role":{},"rgba":{}}}}})",
             R"({"setWindowContent":{"root":{"color":{"none":{}}}}})",
             R"({"setWindowContent":{"root":{"color":{"rgba":{"red":256}}}}})",
             R"({"setWindowContent":{"root":{"children":{}}}})",
             R"({"setWindowContent":{"root":{"children":[{},null]}}})",
             R"({"setStripReadout":{"image":{"bitmap":{}}}})",
             R"({"setStripReadout":{"image":{"bitmap":{"width":1}}}})",
             R"({"setStripReadout":{"image":{"bitmap":{"width":1,"rows":["#"],"height":1}}}})",
             R"({"setStripReadout":{"image":{"bitmap":{"width":1,"rows":["#","##"]}}}})",
             R"({"setStripReadout":{"image":{"bitmap":{"width":1,"rows":["x"]}}}})",
             R"({"setStripReadout":{"image":{"bitmap":{"width":1,"rows":[1]}}}})",
             R"({"setStripReadout":{"image":{"bitmap":{"width":1,"rows":"#"}}}})",
             R"({"setStripReadout":{"image":{"bitmap":{"width":-1,"rows":[]}}}})",
             R"({"setStripReadout":{"image":{"bitmap":{"width":4097,"rows":[]}}}})",
             "{\"useActivationToken\":{\"token\":\"\xFF\"}}",
         }) {
        EXPECT_EQ(MessageCodec::request(line), std::nullopt) << line;
    }
}

TEST(MessageCodec, RefusesMalformedEvents) {
    for (const char* line : {
             "{}",
             R"({"hideStrip":{}})",
             R"({"hello":{"version":1,"name":"x"}})",
             R"({"menuWillOpen":{"place":"bar"}})",
             R"({"menuItemChosen":{"item":{"action":"format"}}})",
             R"({"menuItemChosen":{"item":[]}})",
             R"({"mainMenuActionChosen":{"action":null}})",
         }) {
        EXPECT_EQ(MessageCodec::event(line), std::nullopt) << line;
    }
}

TEST(MessageCodec, ReadsDeepTreesAndRefusesBottomlessOnes) {
    const WindowRequest deep = SetWindowContent{1, nested(64)};
    EXPECT_EQ(MessageCodec::request(MessageCodec::line(deep)), deep);
    EXPECT_EQ(MessageCodec::request(MessageCodec::line(WindowRequest(SetWindowContent{1, nested(200)}))), std::nullopt);

    constexpr std::size_t many = 500'000;
    EXPECT_EQ(MessageCodec::request(std::string(many, '[') + std::string(many, ']')), std::nullopt);
}

TEST(MessageCodec, DoesNotReadANumberThatIsNone) {
    const double infinity = std::numeric_limits<double>::infinity();
    const WindowRequest request = ShowWindow{1, {.title = {}, .width = infinity, .height = 1, .identifier = {}}};
    EXPECT_EQ(MessageCodec::request(MessageCodec::line(request)), std::nullopt);
}

}  // namespace
}  // namespace thermopix
