#pragma once

#include <array>
#include <string_view>

/// A title or degree as it is left when its dots are gone, and as it is printed. Both are ASCII.
struct QVCardScanHonorific {
    std::u16string_view key;
    std::u16string_view value;
};

/// Titles and degrees whose dots are restored in names, in the order in which they are tried. Longer ones do not all
/// come first: the order decides what 'Mrs' becomes.
inline constexpr std::array<QVCardScanHonorific, 23> QVCardScanHonorifics = {{
    {u"Ms", u"Ms."},   {u"Mrs", u"Mrs."},   {u"Mr", u"Mr."},     {u"Rev", u"Rev."},  {u"Fr", u"Fr."},
    {u"Dr", u"Dr."},   {u"Atty", u"Atty."}, {u"Prof", u"Prof."}, {u"Hon", u"Hon."},  {u"Pres", u"Pres."},
    {u"Gov", u"Gov."}, {u"Ofc", u"Ofc."},   {u"Gen", u"Gen."},   {u"Rep", u"Rep."},  {u"Sen", u"Sen."},
    {u"St", u"St."},   {u"Sr", u"Sr."},     {u"Jr", u"Jr."},     {u"PhD", u"Ph.D."}, {u"MD", u"M.D."},
    {u"BA", u"B.A."},  {u"MA", u"M.A."},    {u"DDS", u"D.D.S."},
}};
