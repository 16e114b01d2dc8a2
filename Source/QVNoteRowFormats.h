#pragma once

#include "QVCardScan/QVNoteServiceURLs.h"

#include <string_view>

/// The rows of a note: the frame that all of them share and the format of each kind. The arguments of a format are
/// markup: whoever fills one escapes first.

/// The frame of every row: container, content, label cell.
inline constexpr std::string_view QVContactFieldContainerHeader =
    "<div style=\"float: left; clear: left; min-width: 400px;overflow:hidden; _overflow:visible; zoom:1;\">";
inline constexpr std::string_view QVContactFieldContentHeader =
    "<div style=\"margin: 0;padding: 0;text-align: left;overflow:hidden; _overflow:visible; "
    "zoom:1;margin-bottom:6px;\">";
inline constexpr std::string_view QVContactFieldContentFooter = "</div>";
inline constexpr std::string_view QVContactFieldContainerFooter = "</div>";
inline constexpr std::string_view QVContactFieldLabelHeader =
    "<div style=\"float: left;margin: 0;padding: 0;width: 77px;text-align: left;\"><p "
    "style=\"margin:0;padding:0;\"><span style=\"-webkit-appearance: none;border: none;color: #aaaaaa;font-size: "
    "14px;font-family: Helvetica;\">";
inline constexpr std::string_view QVContactFieldLabelFooter = "</span></p></div>";

/// The first argument of each row format is its label cell.
/// Label cell, address, address.
inline constexpr std::string_view QVContactEmailFormat =
    "<div style=\"x-quorvane:email; -quorvane-editable:email; word-wrap: break-word;\">%@<div "
    "style=\"x-quorvane:value; color: #6f6f6f;\"><a href=\"mailto:%@\">%@</a></div></div>";
/// Label cell, number.
inline constexpr std::string_view QVContactPhoneFormat =
    "<div style=\"x-quorvane:phone; -quorvane-editable:phone; word-wrap: break-word;\">%@<span "
    "style=\"x-quorvane:value; color: #6f6f6f;\">%@</span></div>";
/// Label cell, handle, handle.
inline constexpr std::string_view QVContactTwitterFormat =
    "<div style=\"x-quorvane:twitter; -quorvane-editable:twitter; word-wrap: break-word;\">%@<div "
    "style=\"x-quorvane:value; color: #6f6f6f;\"><a href=\"" QV_TWITTER_PROFILE_BASE_URL "%@\">%@</a></div></div>";
/// Label cell, handle, handle.
inline constexpr std::string_view QVContactWeiboFormat =
    "<div style=\"x-quorvane:weibo; -quorvane-editable:weibo; word-wrap: break-word;\">%@<div "
    "style=\"x-quorvane:value; color: #6f6f6f;\"><a href=\"" QV_WEIBO_PROFILE_BASE_URL "%@\">%@</a></div></div>";
/// Label cell, map link, address.
inline constexpr std::string_view QVContactAddressFormat =
    "<div style=\"x-quorvane:address;-quorvane-editable:address;\">%@<div style=\"x-quorvane:value;\"><a "
    "href=\"%@\">%@</a></div></div>";
/// Label cell, profile link, link text.
inline constexpr std::string_view QVContactLinkedInFormat =
    "<div style=\"x-quorvane:linkedin;-quorvane-editable:linkedin;word-wrap: break-word;\">%@<div "
    "style=\"x-quorvane:value;\"><a href=\"%@\">%@</a></div></div>";
/// Label cell, profile link, link text.
inline constexpr std::string_view QVContactFacebookFormat =
    "<div style=\"x-quorvane:facebook;-quorvane-editable:facebook;word-wrap: break-word;\">%@<div "
    "style=\"x-quorvane:value;\"><a href=\"%@\">%@</a></div></div>";
