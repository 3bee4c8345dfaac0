#include "updates/PageAddress.h"

#include <gtest/gtest.h>

#include <string>

namespace thermopix {
namespace {

TEST(PageAddress, pagesAreHttpsWithAPlainHost) {
    for (const auto* text :
         {"https://example.org", "https://example.org/", "https://example.org:8443/releases/v1.2?tab=all&x=%20#new",
          "https://xn--bcher-kva.example/a(b)_c~d;e,f", "https://127.0.0.1/x", "https://example.org/@home"}) {
        EXPECT_TRUE(isPageAddress(text)) << text;
    }
}

TEST(PageAddress, nothingElseIsAPage) {
    for (const auto* text : {"",
                             "https://",
                             "https:///etc/passwd",
                             "http://example.org",
                             "HTTPS://example.org",
                             "file:///etc/passwd",
                             "javascript:alert(1)",
                             "example.org",
                             " https://example.org",
                             "https://example.org/a b",
                             "https://-x",
                             "https://example.org\n",
                             "https://example.org/\x7F",
                             "https://example.org/\xC3\xA9",
                             "https://a@example.org",
                             "https://example.org@evil.example/",
                             "https://[::1]/",
                             "https://example.org/<b>",
                             "https://example.org/\"",
                             "https://example.org\\@evil.example",
                             "https://?example.org"}) {
        EXPECT_FALSE(isPageAddress(text)) << text;
    }
}

TEST(PageAddress, aPageAddressHasABoundedLength) {
    const std::string start = "https://example.org/";
    EXPECT_TRUE(isPageAddress(start + std::string(2048 - start.size(), 'a')));
    EXPECT_FALSE(isPageAddress(start + std::string(2049 - start.size(), 'a')));
}

}  // namespace
}  // namespace thermopix
