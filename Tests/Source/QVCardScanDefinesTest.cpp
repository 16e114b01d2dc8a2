#include "QVCardScan/QVCardScanDefines.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

namespace {

struct Constant {
    const char* name;
    std::string_view value;
    std::string_view expected;
};

void PrintTo(const Constant& constant, std::ostream* stream) {
    *stream << constant.name;
}

class PublishedTest : public testing::TestWithParam<Constant> {};

TEST_P(PublishedTest, HasItsExactValue) {
    EXPECT_EQ(GetParam().value, GetParam().expected);
}

std::string nameOf(const testing::TestParamInfo<Constant>& info) {
    return info.param.name;
}

// Copies of the published values: nobody may change one on one side only.
// clang-format off
constexpr Constant kMarkup[] = {
    {"QVVeltoNoteTemplateFileName", QVVeltoNoteTemplateFileName, R"qv(velto-note-template-new)qv"},
    {"QVVeltoNoteContactInfoTemplateFileName", QVVeltoNoteContactInfoTemplateFileName, R"qv(velto-note-contact-info-template)qv"},
    {"QVVeltoNoteTemplateFileType", QVVeltoNoteTemplateFileType, R"qv(html)qv"},
    {"QVDisplayAsPlaceholder", QVDisplayAsPlaceholder, R"qv(<!--x-quorvane:display-as-->)qv"},
    {"QVFamilyNamePlaceholder", QVFamilyNamePlaceholder, R"qv(<!--x-quorvane:family-name-->)qv"},
    {"QVGivenNamePlaceholder", QVGivenNamePlaceholder, R"qv(<!--x-quorvane:given-name-->)qv"},
    {"QVPFamilyNamePlaceholder", QVPFamilyNamePlaceholder, R"qv(<!--x-quorvane:phonetic-family-name-->)qv"},
    {"QVPGivenNamePlaceholder", QVPGivenNamePlaceholder, R"qv(<!--x-quorvane:phonetic-given-name-->)qv"},
    {"QVTitlePlaceholder", QVTitlePlaceholder, R"qv(<!--x-quorvane:contact-title-->)qv"},
    {"QVOrgPlaceholder", QVOrgPlaceholder, R"qv(<!--x-quorvane:contact-org-->)qv"},
    {"QVURLPlaceholder", QVURLPlaceholder, R"qv(<!--x-quorvane:contact-url-->)qv"},
    {"QVEmailsPlaceholder", QVEmailsPlaceholder, R"qv(<!--x-quorvane:emails-->)qv"},
    {"QVPhonesPlaceholder", QVPhonesPlaceholder, R"qv(<!--x-quorvane:phones-->)qv"},
    {"QVTwittersPlaceholder", QVTwittersPlaceholder, R"qv(<!--x-quorvane:twitters-->)qv"},
    {"QVWeibosPlaceholder", QVWeibosPlaceholder, R"qv(<!--x-quorvane:weibos-->)qv"},
    {"QVLinkedInPlaceholder", QVLinkedInPlaceholder, R"qv(<!--x-quorvane:linkedin-->)qv"},
    {"QVFacebookPlaceholder", QVFacebookPlaceholder, R"qv(<!--x-quorvane:facebook-->)qv"},
    {"QVProfileImagePlaceholder", QVProfileImagePlaceholder, R"qv(<!--x-quorvane:profile-image-->)qv"},
    {"QVDatePlaceholder", QVDatePlaceholder, R"qv(<!--x-quorvane:date-created-->)qv"},
    {"QVPlaceNamePlaceholder", QVPlaceNamePlaceholder, R"qv(<!--x-quorvane:place-name-->)qv"},
    {"QVPlaceAddressPlaceholder", QVPlaceAddressPlaceholder, R"qv(<!--x-quorvane:place-address-->)qv"},
    {"QVNoteContentPlaceholder", QVNoteContentPlaceholder, R"qv(<!--x-quorvane:note-->)qv"},
    {"QVNoteAttachmentsPlaceHolder", QVNoteAttachmentsPlaceHolder, R"qv(<!--x-quorvane:attachments-->)qv"},
    {"QVContactFieldContainerHeader", QVContactFieldContainerHeader, R"qv(<div style="float: left; clear: left; min-width: 400px;overflow:hidden; _overflow:visible; zoom:1;">)qv"},
    {"QVContactFieldContentHeader", QVContactFieldContentHeader, R"qv(<div style="margin: 0;padding: 0;text-align: left;overflow:hidden; _overflow:visible; zoom:1;margin-bottom:6px;">)qv"},
    {"QVContactFieldContentFooter", QVContactFieldContentFooter, R"qv(</div>)qv"},
    {"QVContactFieldContainerFooter", QVContactFieldContainerFooter, R"qv(</div>)qv"},
    {"QVContactEmailFormat", QVContactEmailFormat, R"qv(<div style="x-quorvane:email; -quorvane-editable:email; word-wrap: break-word;">%@<div style="x-quorvane:value; color: #6f6f6f;"><a href="mailto:%@">%@</a></div></div>)qv"},
    {"QVContactPhoneFormat", QVContactPhoneFormat, R"qv(<div style="x-quorvane:phone; -quorvane-editable:phone; word-wrap: break-word;">%@<span style="x-quorvane:value; color: #6f6f6f;">%@</span></div>)qv"},
    {"QVContactAddressFormat", QVContactAddressFormat, R"qv(<div style="x-quorvane:address;-quorvane-editable:address;">%@<div style="x-quorvane:value;"><a href="%@">%@</a></div></div>)qv"},
    {"QVContactLinkedInFormat", QVContactLinkedInFormat, R"qv(<div style="x-quorvane:linkedin;-quorvane-editable:linkedin;word-wrap: break-word;">%@<div style="x-quorvane:value;"><a href="%@">%@</a></div></div>)qv"},
    {"QVContactFacebookFormat", QVContactFacebookFormat, R"qv(<div style="x-quorvane:facebook;-quorvane-editable:facebook;word-wrap: break-word;">%@<div style="x-quorvane:value;"><a href="%@">%@</a></div></div>)qv"},
    {"QVStyleFamilyName", QVStyleFamilyName, R"qv(<span style="x-quorvane:family-name">%@</span>)qv"},
    {"QVStyleGivenName", QVStyleGivenName, R"qv(<span style="x-quorvane:given-name">%@</span>)qv"},
    {"QVStylePFamilyName", QVStylePFamilyName, R"qv(<span style="x-quorvane:phonetic-family-name">%@</span>)qv"},
    {"QVStylePGivenName", QVStylePGivenName, R"qv(<span style="x-quorvane:phonetic-given-name">%@</span>)qv"},
    {"QVStyleContactOrg", QVStyleContactOrg, R"qv(<span><span style="x-quorvane:contact-org">%@</span></span>)qv"},
    {"QVStyleContactURL", QVStyleContactURL, R"qv(<a href="http://%@"><span style="x-quorvane:contact-url">%@</span></a>)qv"},
    {"QVStyleEmail", QVStyleEmail, R"qv(<span style="x-quorvane:email"><a style="display:block;color: #a1d0dc;text-decoration: none;" href="mailto:%@"><span style="x-quorvane:value">%@</span></a></span>)qv"},
    {"QVStylePhone", QVStylePhone, R"qv(<span style="display:block;"><span style="x-quorvane:phone"><span style="x-quorvane:value">%@</span></span></span>)qv"},
    {"QVStyleAddress", QVStyleAddress, R"qv(<span style="display:block;"><span style="x-quorvane:place-address">%@</span></span>)qv"},
    {"QVDisplayNone", QVDisplayNone, R"qv(display:none;)qv"},
    {"QVVeltoImageFileType", QVVeltoImageFileType, R"qv(image/jpeg)qv"},
    {"QVNoteAvatarPlaceHolder", QVNoteAvatarPlaceHolder, R"qv(<!--x-quorvane:profile-image-->)qv"},
    {"QVStyleDisplayAs", QVStyleDisplayAs, R"qv(<span style="x-quorvane:display-as">%@</span>)qv"},
    {"QVStyleImageAttachment", QVStyleImageAttachment, R"qv(<div style="x-quorvane:card-image;width: 500px; height:auto; padding: 20px; margin-bottom: 20px;"><qv-media style="width: 93%%;height:auto;margin-left: 3.5%%;" hash="%@" type="%@"/></div>)qv"},
    {"QVStyleContactTitle", QVStyleContactTitle, R"qv(<span><span style="x-quorvane:contact-title">%@</span>)qv"},
    {"QVContactTwitterFormat", QVContactTwitterFormat, R"qv(<div style="x-quorvane:twitter; -quorvane-editable:twitter; word-wrap: break-word;">%@<div style="x-quorvane:value; color: #6f6f6f;"><a href="http://twitter.com/%@">%@</a></div></div>)qv"},
    {"QVContactWeiboFormat", QVContactWeiboFormat, R"qv(<div style="x-quorvane:weibo; -quorvane-editable:weibo; word-wrap: break-word;">%@<div style="x-quorvane:value; color: #6f6f6f;"><a href="http://weibo.com/%@">%@</a></div></div>)qv"},
    {"QVStyleTwitter", QVStyleTwitter, R"qv(<span style="x-quorvane:twitter"><a style="display:block;color: #a1d0dc;text-decoration: none;" href="http://twitter.com/%@"><span style="x-quorvane:value">%@</span></a></span>)qv"},
    {"QVStyleWeibo", QVStyleWeibo, R"qv(<span style="x-quorvane:weibo"><a style="display:block;color: #a1d0dc;text-decoration: none;" href="http://weibo.com/%@"><span style="x-quorvane:value">%@</span></a></span>)qv"},
    {"QVNoteEmptyAvatarPlaceholder", QVNoteEmptyAvatarPlaceholder, R"qv(<div style="width:130px; height; 130px; display:block;">&nbsp;</div>)qv"},
    {"QVContactFieldLabelHeader", QVContactFieldLabelHeader, R"qv(<div style="float: left;margin: 0;padding: 0;width: 77px;text-align: left;"><p style="margin:0;padding:0;"><span style="-webkit-appearance: none;border: none;color: #aaaaaa;font-size: 14px;font-family: Helvetica;">)qv"},
    {"QVContactFieldLabelFooter", QVContactFieldLabelFooter, R"qv(</span></p></div>)qv"},
};

constexpr Constant kSocialSearch[] = {
    {"kQVSocialSearchFinishedNotification", kQVSocialSearchFinishedNotification, R"qv(QVSocialSearchFinishedNotification)qv"},
    {"kQVSocialSearchRequestIDKey", kQVSocialSearchRequestIDKey, R"qv(QVSocialSearchRequestIDKey)qv"},
    {"kQVSocialSearchResultTypeKey", kQVSocialSearchResultTypeKey, R"qv(QVSocialSearchResultTypeKey)qv"},
    {"kQVSocialSearchSocialProfileKey", kQVSocialSearchSocialProfileKey, R"qv(QVSocialSearchSocialProfileKey)qv"},
    {"kQVSocialSearchNewQVMLContentKey", kQVSocialSearchNewQVMLContentKey, R"qv(QVSocialSearchNewQVMLContentKey)qv"},
    {"kQVSocialSearchNewImageResourcesKey", kQVSocialSearchNewImageResourcesKey, R"qv(QVSocialSearchNewImageResourcesKey)qv"},
    {"kQVSocialSearchBaseVeltoContactKey", kQVSocialSearchBaseVeltoContactKey, R"qv(QVSocialSearchBaseVeltoContactKey)qv"},
    {"kQVSocialSearchStartedDateKey", kQVSocialSearchStartedDateKey, R"qv(QVSocialSearchStartedDateKey)qv"},
};

// clang-format on

INSTANTIATE_TEST_SUITE_P(NoteMarkup, PublishedTest, testing::ValuesIn(kMarkup), nameOf);
INSTANTIATE_TEST_SUITE_P(SocialSearch, PublishedTest, testing::ValuesIn(kSocialSearch), nameOf);

TEST(QVCardScanDefines, LightSeparatorHasFiftyFiveSpacesBetweenItsDeclarations) {
    const std::string gap(55, ' ');
    const std::string expected =
        std::string(R"(<hr style=")") + "border-top-color: rgba(190, 190, 190, .5);" + gap + "border-top-width: 1px;" +
        gap + "border-top-style: solid;" + gap + "border-bottom-color: rgba(255, 255, 255, .5);" + gap +
        "border-bottom-width: 1px;" + gap + "border-bottom-style: solid;" + gap + "border-right-style: none;" + gap +
        "border-left-style: none;" + gap + "max-width: 420px;" + gap + "min-width: 300px;" + R"(" />)";
    EXPECT_EQ(QVLightSeparator, expected);
}

TEST(QVCardScanDefines, ImageWidthIsFourHundredPoints) {
    static_assert(std::is_same_v<decltype(QVVeltoImageWidth), const double>);
    EXPECT_EQ(QVVeltoImageWidth, 400.0);
}

TEST(QVCardScanDefines, ResultTypesAreTheNumbersThatNotificationsCarry) {
    EXPECT_EQ(QVSocialSearchResultNotFound, 0);
    EXPECT_EQ(QVSocialSearchResultLinkedIn, 1);
    EXPECT_EQ(QVSocialSearchResultFacebook, 2);
    EXPECT_EQ(QVSocialSearchResultLinkedInAndFacebook, 3);
    EXPECT_EQ(QVSocialSearchResultTimedOut, 4);
}

}  // namespace
