#include "Support/WebText.h"

#include <gtest/gtest.h>

namespace {

using qvhost::WebText::address;
using qvhost::WebText::escaped;

TEST(WebText, TextIsNeverMarkup) {
    EXPECT_EQ(escaped("<b a=\"1\" c='2'>&amp;"), "&lt;b a=&quot;1&quot; c=&#39;2&#39;&gt;&amp;amp;");
    EXPECT_EQ(escaped("Grüße\n\tzwei"), "Grüße\n\tzwei");
    EXPECT_EQ(escaped(""), "");
}

TEST(WebText, WhatIsNoTextIsReplaced) {
    EXPECT_EQ(escaped(std::string("a\0b\x1b", 4)),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD");
    EXPECT_EQ(escaped("a\xFF"), "a\xEF\xBF\xBD");
}

TEST(WebText, AddressesHoldEveryName) {
    EXPECT_EQ(address("cards/a-b_c.~1/x.jpg"), "cards/a-b_c.~1/x.jpg");
    EXPECT_EQ(address("a b\"<>?#%\n\xFF"), "a%20b%22%3C%3E%3F%23%25%0A%FF");
    EXPECT_EQ(address("ü"), "%C3%BC");
}

}  // namespace
