#pragma once

#include "QVCardScan/QVNoteServiceURLs.h"

#include <string_view>

/// The published pieces of note markup other than rows. "%@" marks an argument, which is markup: whoever fills a piece
/// escapes first. "%%" stands for one percent sign.

/// Written by the note generator: the display name, a card image (hash, MIME type), and what stands for an avatar that
/// has no hash or type. The malformed height is published that way.
inline constexpr std::string_view QVStyleDisplayAs = "<span style=\"x-quorvane:display-as\">%@</span>";
inline constexpr std::string_view QVStyleImageAttachment =
    "<div style=\"x-quorvane:card-image;width: 500px; height:auto; padding: 20px; margin-bottom: 20px;\"><qv-media "
    "style=\"width: 93%%;height:auto;margin-left: 3.5%%;\" hash=\"%@\" type=\"%@\"/></div>";
inline constexpr std::string_view QVNoteEmptyAvatarPlaceholder =
    "<div style=\"width:130px; height; 130px; display:block;\">&nbsp;</div>";

/// For the host's own templates and editor; the generator never writes them.
inline constexpr std::string_view QVStyleFamilyName = "<span style=\"x-quorvane:family-name\">%@</span>";
inline constexpr std::string_view QVStyleGivenName = "<span style=\"x-quorvane:given-name\">%@</span>";
inline constexpr std::string_view QVStylePFamilyName = "<span style=\"x-quorvane:phonetic-family-name\">%@</span>";
inline constexpr std::string_view QVStylePGivenName = "<span style=\"x-quorvane:phonetic-given-name\">%@</span>";
/// Leaves one element open, as published.
inline constexpr std::string_view QVStyleContactTitle = "<span><span style=\"x-quorvane:contact-title\">%@</span>";
inline constexpr std::string_view QVStyleContactOrg = "<span><span style=\"x-quorvane:contact-org\">%@</span></span>";
inline constexpr std::string_view QVStyleContactURL =
    "<a href=\"http://%@\"><span style=\"x-quorvane:contact-url\">%@</span></a>";
inline constexpr std::string_view QVStyleEmail =
    "<span style=\"x-quorvane:email\"><a style=\"display:block;color: #a1d0dc;text-decoration: none;\" "
    "href=\"mailto:%@\"><span style=\"x-quorvane:value\">%@</span></a></span>";
inline constexpr std::string_view QVStylePhone =
    "<span style=\"display:block;\"><span style=\"x-quorvane:phone\"><span "
    "style=\"x-quorvane:value\">%@</span></span></span>";
inline constexpr std::string_view QVStyleTwitter =
    "<span style=\"x-quorvane:twitter\"><a style=\"display:block;color: #a1d0dc;text-decoration: none;\" "
    "href=\"" QV_TWITTER_PROFILE_BASE_URL "%@\"><span style=\"x-quorvane:value\">%@</span></a></span>";
inline constexpr std::string_view QVStyleWeibo =
    "<span style=\"x-quorvane:weibo\"><a style=\"display:block;color: #a1d0dc;text-decoration: none;\" "
    "href=\"" QV_WEIBO_PROFILE_BASE_URL "%@\"><span style=\"x-quorvane:value\">%@</span></a></span>";
inline constexpr std::string_view QVStyleAddress =
    "<span style=\"display:block;\"><span style=\"x-quorvane:place-address\">%@</span></span>";
inline constexpr std::string_view QVDisplayNone = "display:none;";

/// The gap between the declarations of the separator.
#define QV_SEPARATOR_GAP "                                                       "
// clang-format off
inline constexpr std::string_view QVLightSeparator =
    "<hr style=\""
    "border-top-color: rgba(190, 190, 190, .5);" QV_SEPARATOR_GAP
    "border-top-width: 1px;" QV_SEPARATOR_GAP
    "border-top-style: solid;" QV_SEPARATOR_GAP
    "border-bottom-color: rgba(255, 255, 255, .5);" QV_SEPARATOR_GAP
    "border-bottom-width: 1px;" QV_SEPARATOR_GAP
    "border-bottom-style: solid;" QV_SEPARATOR_GAP
    "border-right-style: none;" QV_SEPARATOR_GAP
    "border-left-style: none;" QV_SEPARATOR_GAP
    "max-width: 420px;" QV_SEPARATOR_GAP
    "min-width: 300px;"
    "\" />";
// clang-format on
#undef QV_SEPARATOR_GAP

/// The encoding and the width, in points, of pictures in a note.
inline constexpr std::string_view QVVeltoImageFileType = "image/jpeg";
inline constexpr double QVVeltoImageWidth = 400.0;
