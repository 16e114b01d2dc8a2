#include "Support/HostProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testsupport::hostCall;
using testsupport::hostData;
using testsupport::runHost;
using testsupport::runProcess;

TEST(NoteCommand, PrintsTheFullNoteWithoutPictures) {
    const auto result = runHost({"note", hostData("front.xml")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, IsEmpty());
    EXPECT_THAT(result.output, HasSubstr("<span style=\"x-quorvane:display-as\">Ada Example</span>"));
    EXPECT_THAT(result.output, HasSubstr("mailto:ada@example.com"));
    EXPECT_THAT(result.output, HasSubstr("<qv-media "));
    EXPECT_THAT(result.output, Not(HasSubstr("x-quorvane:card-image")));
    EXPECT_THAT(result.output, Not(HasSubstr("<!--x-quorvane:attachments-->")));
}

TEST(NoteCommand, PrintsTheContactInfoBlock) {
    const auto result = runHost({"note", hostData("front.xml"), "--contact-info"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("Ada Example"));
    EXPECT_THAT(result.output, HasSubstr("src=\"\" id=\"\" class=\"qv-media\""));
    EXPECT_THAT(result.output, Not(HasSubstr("<qv-media")));
}

TEST(NoteCommand, TheContactInfoBlockShowsNoBrokenPicture) {
    const auto result = runHost({"note", hostData("front.xml"), "--contact-info"});
    EXPECT_THAT(result.output, HasSubstr(".qv-info-head img[id=\"\"]{display:none}"));
}

TEST(NoteCommand, StandardInputIsReadOnce) {
    auto call = hostCall({"note", "-", "-"});
    call.input = "<recoIndex/>";
    const auto result = runProcess(call);
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, HasSubstr("standard input"));
}

TEST(NoteCommand, MergesTwoResults) {
    const auto result = runHost({"note", hostData("front-poor.xml"), hostData("back-turned.xml")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("Bo Sample"));
    EXPECT_THAT(result.output, HasSubstr("Director"));
    EXPECT_THAT(result.output, HasSubstr("Example &amp; Co"));
}

TEST(NoteCommand, ABackAloneIsEnough) {
    const auto result = runHost({"note", hostData("no-card.xml"), hostData("back-turned.xml")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("Bo Sample"));
}

TEST(NoteCommand, NoCardIsStatusOne) {
    const auto result = runHost({"note", hostData("no-card.xml"), hostData("no-card.xml")});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_THAT(result.error, HasSubstr("no card"));
}

TEST(NoteCommand, CardTextIsNoMarkup) {
    const auto result = runHost({"note", hostData("hostile.xml")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("&lt;script&gt;"));
    EXPECT_THAT(result.output, Not(HasSubstr("<script")));
}

TEST(NoteCommand, EitherFileMissingIsAWrongCall) {
    EXPECT_EQ(runHost({"note", "missing.xml"}).status, 2);
    const auto result = runHost({"note", hostData("front.xml"), "missing.xml"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.error, HasSubstr("missing.xml"));
}

TEST(NoteCommand, AFullDiskIsStatusThree) {
    auto call = hostCall({"note", hostData("front.xml")});
    call.outputFile = "/dev/full";
    EXPECT_EQ(runProcess(call).status, 3);
}

}  // namespace
