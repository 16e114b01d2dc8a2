#pragma once

#include "Fields/Field.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace qv::recognition {

/// What cards print: lines one below the other, each a paragraph apart where a line is empty; a line that begins with
/// "#" is set larger. And what they are taken for.
struct UsualPrint {
    const char* name;
    std::vector<std::string> lines;
    std::multimap<FieldType, std::string> fields;
    const char* language = "en";
};

/// Decides each of them; UsualPrintTest.cpp says how, and each table of them stands in a file of its own.
class UsualPrintTest : public testing::TestWithParam<UsualPrint> {};

}  // namespace qv::recognition
