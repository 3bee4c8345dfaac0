#include "platform/linux/updates/AppcastReader.h"

#include <gtest/gtest.h>

#include <string>

namespace thermopix {
namespace {

std::string document(const std::string& content) {
    return R"(<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle">)" + content +
           "</rss>";
}

std::string item(const std::string& content) {
    return document("<channel><item>" + content + "</item></channel>");
}

AppcastItem onlyItem(const std::string& text) {
    const auto appcast = readAppcast(text);
    if (!appcast || appcast->items.size() != 1) {
        ADD_FAILURE() << text;
        return {};
    }
    return appcast->items.front();
}

TEST(AppcastReader, readsAReleaseFromItsElements) {
    const auto appcast = readAppcast(R"(<?xml version="1.0" encoding="utf-8"?>
        <rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle"
             xmlns:dc="http://purl.org/dc/elements/1.1/">
          <channel>
            <title>Thermopix</title>
            <link>https://example.org</link>
            <item>
              <title>Version 1.3</title>
              <link>
                https://example.org/1.3
              </link>
              <sparkle:version>512</sparkle:version>
              <sparkle:shortVersionString>1.3</sparkle:shortVersionString>
              <sparkle:minimumSystemVersion>5.10</sparkle:minimumSystemVersion>
              <sparkle:channel>beta</sparkle:channel>
              <sparkle:releaseNotesLink>https://example.org/notes</sparkle:releaseNotesLink>
              <sparkle:criticalUpdate sparkle:version="500"/>
              <enclosure url="https://example.org/a" sparkle:os="linux"/>
              <enclosure url="https://example.org/b"/>
            </item>
          </channel>
        </rss>)");
    AppcastItem expected;
    expected.version = "512";
    expected.shortVersion = "1.3";
    expected.minimumSystemVersion = "5.10";
    expected.channel = "beta";
    expected.link = "https://example.org/1.3";
    expected.releaseNotesLink = "https://example.org/notes";
    expected.isCritical = true;
    expected.criticalBelow = "500";
    expected.systems = {"linux", ""};
    EXPECT_EQ(appcast, (Appcast{"https://example.org", {expected}}));
}

TEST(AppcastReader, readsVersionsFromTheDownloadWhereTheReleaseHasNone) {
    const auto read =
        onlyItem(item(R"(<enclosure sparkle:version="512" sparkle:shortVersionString="1.3" sparkle:os="linux"/>)"));
    EXPECT_EQ(read.version, "512");
    EXPECT_EQ(read.shortVersion, "1.3");
}

TEST(AppcastReader, whatTheReleaseSaysGoesBeforeWhatItsDownloadSays) {
    const std::string enclosure = R"(<enclosure sparkle:version="1" sparkle:shortVersionString="0.1"/>)";
    const std::string elements =
        "<sparkle:version>512</sparkle:version><sparkle:shortVersionString>1.3</sparkle:shortVersionString>";
    for (const auto& content : {enclosure + elements, elements + enclosure}) {
        const auto read = onlyItem(item(content));
        EXPECT_EQ(read.version, "512");
        EXPECT_EQ(read.shortVersion, "1.3");
    }
}

TEST(AppcastReader, versionsOfOneReleaseAreNotThoseOfTheNext) {
    const auto appcast = readAppcast(
        document(R"(<channel><item><enclosure sparkle:version="1"/></item><item><enclosure/></item></channel>)"));
    ASSERT_TRUE(appcast);
    ASSERT_EQ(appcast->items.size(), 2U);
    EXPECT_EQ(appcast->items[0].version, "1");
    EXPECT_EQ(appcast->items[1].version, "");
}

TEST(AppcastReader, aCriticalReleaseMayBeTaggedAsOlderFeedsDo) {
    EXPECT_TRUE(onlyItem(item("<sparkle:tags><sparkle:criticalUpdate/></sparkle:tags>")).isCritical);
    EXPECT_TRUE(onlyItem(item("<sparkle:criticalUpdate></sparkle:criticalUpdate>")).isCritical);
    EXPECT_FALSE(onlyItem(item("<criticalUpdate/>")).isCritical);
}

TEST(AppcastReader, thePrefixOfTheNamespaceDoesNotMatterAndTheNamespaceDoes) {
    const auto other = [](const std::string& space) {
        return "<rss xmlns:u=\"" + space + "\"><channel><item><u:version>7</u:version></item></channel></rss>";
    };
    EXPECT_EQ(onlyItem(other("http://www.andymatuschak.org/xml-namespaces/sparkle")).version, "7");
    EXPECT_EQ(onlyItem(other("http://example.org/other")).version, "");
    EXPECT_EQ(onlyItem(item("<version>7</version>")).version, "");
}

TEST(AppcastReader, theFirstOfRepeatedElementsCounts) {
    EXPECT_EQ(onlyItem(item("<link>https://a.example</link><link>https://b.example</link>")).link, "https://a.example");
}

TEST(AppcastReader, elementsInOtherPlacesAreNotTheReleases) {
    const auto read =
        onlyItem(item("<description><link>https://a.example</link></description>"
                      "<link>https://b<b>.evil</b>.example</link>"));
    EXPECT_EQ(read.link, "https://b.example");
    const auto appcast =
        readAppcast(document("<channel><image><link>https://a.example</link><item/></image></channel><item/>"));
    EXPECT_EQ(appcast, Appcast());
}

TEST(AppcastReader, textInPartsIsOneText) {
    EXPECT_EQ(onlyItem(item("<link>https://a.example/<![CDATA[?x&]]>y<!-- no -->&amp;z</link>")).link,
              "https://a.example/?x&y&z");
}

TEST(AppcastReader, aTextThatIsTooLongReadsAsEmpty) {
    const auto linkOf = [](std::size_t length) {
        return onlyItem(item("<link>" + std::string(length, 'x') + "</link>")).link.size();
    };
    EXPECT_EQ(linkOf(4096), 4096U);
    EXPECT_EQ(linkOf(4097), 0U);
    EXPECT_EQ(linkOf(100000), 0U);
    EXPECT_EQ(onlyItem(item("<enclosure sparkle:version=\"" + std::string(4097, '1') + "\"/>")).version, "");
}

TEST(AppcastReader, aFeedMayBeEmpty) {
    EXPECT_EQ(readAppcast("<rss><channel/></rss>"), Appcast());
}

TEST(AppcastReader, aFeedHasABoundedNumberOfReleases) {
    const auto feedOf = [](int count) {
        std::string items;
        for (int i = 0; i < count; ++i) {
            items += "<item/>";
        }
        return readAppcast(document("<channel>" + items + "</channel>"));
    };
    EXPECT_TRUE(feedOf(1000));
    EXPECT_FALSE(feedOf(1001));
}

TEST(AppcastReader, aDocumentThatIsNoFeedIsNone) {
    for (const auto* text :
         {"", " ", "{}", "<rss>", "<rss/>", "<rss><item/></rss>", "<feed><channel/></feed>",
          "<rss><channel></rss></channel>", "<rss><channel/></rss><rss/>", "<rss><channel><x:item/></channel></rss>",
          "<rss><channel>&undefined;</channel></rss>", "<rss><channel a='1' a='2'/></rss>",
          "<?xml version='1.0' encoding='ebcdic'?><rss><channel/></rss>", "<rss><channel>\xFF</channel></rss>"}) {
        EXPECT_FALSE(readAppcast(text)) << text;
    }
}

TEST(AppcastReader, aDocumentTypeIsRefusedWhateverItHolds) {
    for (const auto* type : {"<!DOCTYPE rss>", "<!DOCTYPE rss SYSTEM 'http://example.org/rss.dtd'>",
                             "<!DOCTYPE rss [<!ENTITY a 'b'>]>", "<!DOCTYPE rss [<!ENTITY % a 'b'> %a;]>"}) {
        EXPECT_FALSE(readAppcast(std::string(type) + "<rss><channel/></rss>")) << type;
    }
}

}  // namespace
}  // namespace thermopix
