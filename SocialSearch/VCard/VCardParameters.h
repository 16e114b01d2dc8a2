#pragma once

#include "QVSocialSearch/QVVCardProperty.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The parameters at the beginning of a text, and how long they are, with the colon behind them.
struct ParameterList {
    std::vector<QVVCardParameter> parameters;
    std::size_t length = 0;
};

/// Reads ";A=b;C="d":" as in a line behind its name. Nothing when it is not well formed, or has more parameters than
/// anybody needs.
std::optional<ParameterList> parametersInLine(QVVCardVersion version, std::string_view text);

/// Writes them as they stand behind a name, without the colon: in quotes where they must be, with the escapes of
/// RFC 6868.
std::string textOfParameters(QVVCardVersion version, const std::vector<QVVCardParameter>& parameters);
