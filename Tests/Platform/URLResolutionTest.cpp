#include "QVPlatform/URL.h"

#include <gtest/gtest.h>

#include <string>

using qv::URL;

namespace {

struct ResolutionRow {
    const char* name;
    const char* reference;
    const char* address;  ///< null: none
};

class URLResolution : public testing::TestWithParam<ResolutionRow> {};

TEST_P(URLResolution, GivesTheCompleteAddress) {
    const auto base = URL::URLWithString("http://a:8080/b/c/d;p?q");
    const auto url = URL::URLWithString(GetParam().reference, /*relativeToURL=*/base.value());
    ASSERT_EQ(url.has_value(), GetParam().address != nullptr);
    EXPECT_EQ(url ? url->absoluteString() : "", GetParam().address == nullptr ? "" : GetParam().address);
}

// Among them examples of RFC 3986, 5.4.
INSTANTIATE_TEST_SUITE_P(Rows, URLResolution,
                         testing::Values(ResolutionRow{"Sibling", "g", "http://a:8080/b/c/g"},
                                         ResolutionRow{"Folder", "g/", "http://a:8080/b/c/g/"},
                                         ResolutionRow{"Root", "/g", "http://a:8080/g"},
                                         ResolutionRow{"Authority", "//g/x", "http://g/x"},
                                         ResolutionRow{"Query", "?y", "http://a:8080/b/c/d;p?y"},
                                         ResolutionRow{"Up", "../g", "http://a:8080/b/g"},
                                         ResolutionRow{"FarUp", "../../../g", "http://a:8080/g"},
                                         ResolutionRow{"DotsInside", "/x/../../g", "http://a:8080/g"},
                                         ResolutionRow{"EscapesStay", "/x%2Fy/%C3%A9", "http://a:8080/x%2Fy/%C3%A9"},
                                         ResolutionRow{"BlanksAndBytes", "/x y/\xC3\xA9", "http://a:8080/x%20y/%c3%a9"},
                                         ResolutionRow{"Complete", "https://g/x", "https://g/x"},
                                         ResolutionRow{"NoHost", "http://", nullptr},
                                         ResolutionRow{"BadHost", "http://[::1/", nullptr},
                                         ResolutionRow{"BadPort", "http://a:b/", nullptr}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(URLOrigin, IsSchemeHostAndPort) {
    const URL url = URL::URLWithString("https://Example.com/a").value();
    for (const char* same : {"https://example.com/b", "HTTPS://EXAMPLE.COM:443/", "https://user@example.com/?q"})
        EXPECT_TRUE(url.isSameOriginAs(URL::URLWithString(same).value())) << same;
    for (const char* other : {"http://example.com/a", "https://example.com:444/a", "https://www.example.com/a",
                              "https://example.com.evil.example/a", "https://example.org@evil.example/", "/a", "a"})
        EXPECT_FALSE(url.isSameOriginAs(URL::URLWithString(other).value())) << other;
    const URL relative = URL::URLWithString("/a").value();
    EXPECT_FALSE(relative.isSameOriginAs(relative));
}

TEST(URLPath, IsAsItWasWritten) {
    EXPECT_EQ(URL::URLWithString("https://h/a%2Fb/c?d#e")->path(), "/a%2Fb/c");
    EXPECT_EQ(URL::URLWithString("https://h")->path(), "");
    EXPECT_EQ(URL::URLWithString("a/b")->path(), "a/b");
}

}  // namespace
