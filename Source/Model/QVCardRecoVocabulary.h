#pragma once

#include <string_view>

/// The names in a recognition result, the XML document with which the server answers a card image:
///
///     <recoIndex lang="en" objWidth="1024" objHeight="600">
///       <item fldType="name" x="10" y="20" w="120" h="18" orient="0"><t w="87">John Smith</t></item>
///     </recoIndex>
///
/// written without white space between its elements, because that would be part of the fields' text. All names are
/// compared exactly. Sizes and positions are in the units of the image that was sent.

/// The document: one card.
inline constexpr std::string_view CardRecoElementRoot = "recoIndex";
/// One recognised field.
inline constexpr std::string_view CardRecoElementItem = "item";
/// A piece of the field's text.
inline constexpr std::string_view CardRecoElementText = "t";

/// On the document: the language it was recognised in.
inline constexpr std::string_view CardRecoPropertyLanguage = "lang";
/// On the document: the card's size, whole numbers.
inline constexpr std::string_view CardRecoPropertyCardWidth = "objWidth";
inline constexpr std::string_view CardRecoPropertyCardHeight = "objHeight";

/// On an item: what kind of field it is, one of the values below in any case.
inline constexpr std::string_view CardRecoPropertyFieldType = "fldType";
/// On an item: where it lies on the card, decimal numbers.
inline constexpr std::string_view CardRecoPropertyPositionX = "x";
inline constexpr std::string_view CardRecoPropertyPositionY = "y";
inline constexpr std::string_view CardRecoPropertySizeWidth = "w";
inline constexpr std::string_view CardRecoPropertySizeHeight = "h";
/// On an item: how far the picture must be turned to stand upright, whole degrees clockwise.
inline constexpr std::string_view CardRecoPropertyOrientation = "orient";
/// On an item; not read.
inline constexpr std::string_view CardRecoPropertyFieldDomain = "fldDom";

/// On a piece of text: the confidence, a whole number; higher is better.
inline constexpr std::string_view CardRecoPropertyWeight = "w";

/// The kinds of fields.
inline constexpr std::string_view CardRecoPropertyFieldTypeValueName = "name";
inline constexpr std::string_view CardRecoPropertyFieldTypeValueEmail = "email";
inline constexpr std::string_view CardRecoPropertyFieldTypeValuePhone = "phone";
inline constexpr std::string_view CardRecoPropertyFieldTypeValueURL = "url";
inline constexpr std::string_view CardRecoPropertyFieldTypeValueAddress = "address";
inline constexpr std::string_view CardRecoPropertyFieldTypeValueTitle = "title";
inline constexpr std::string_view CardRecoPropertyFieldTypeValueWeb = "web";
inline constexpr std::string_view CardRecoPropertyFieldTypeValueFax = "fax";
inline constexpr std::string_view CardRecoPropertyFieldTypeValueMobile = "mobile";
inline constexpr std::string_view CardRecoPropertyFieldTypeValueCompany = "company";
inline constexpr std::string_view CardRecoPropertyFieldTypeValueDepartment = "department";
inline constexpr std::string_view CardRecoPropertyFieldTypeValueTwitter = "twitter";
inline constexpr std::string_view CardRecoPropertyFieldTypeValueSkype = "skype";
