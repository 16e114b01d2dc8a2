#include "Output/MediaReference.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using qvhost::MediaReference;

TEST(MediaReference, FindsEveryElementInOrder) {
    const std::string note =
        "<p><qv-media style=\"a:b\" hash=\"h1\" type=\"image/png\" />x"
        "<qv-media hash=\"h2\" type=\"t\"/></p>&lt;qv-media hash=&quot;h3&quot;&gt;";
    const auto references = MediaReference::allIn(note);
    ASSERT_EQ(references.size(), 2U);
    EXPECT_EQ(references[0].hash, "h1");
    EXPECT_EQ(references[0].style, "a:b");
    EXPECT_EQ(note.substr(references[0].position, references[0].length),
              "<qv-media style=\"a:b\" hash=\"h1\" type=\"image/png\" />");
    EXPECT_EQ(references[1].hash, "h2");
    EXPECT_EQ(references[1].style, "");
}

TEST(MediaReference, ToleratesWhatIsNone) {
    EXPECT_TRUE(MediaReference::allIn("").empty());
    EXPECT_TRUE(MediaReference::allIn("<qv-media hash=\"never closed").empty());
    EXPECT_TRUE(MediaReference::allIn("<qv-mediator hash=\"x\">").empty());
}

}  // namespace
