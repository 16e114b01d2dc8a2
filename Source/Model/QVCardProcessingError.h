#pragma once

#include <string_view>

/// The domain of every error the framework itself makes.
inline constexpr std::string_view kQVCardProcessingErrorDomain = "kQVCardProcessingErrorDomain";

/// `userInfo` key under which the lower-level error (`qv::Error`) that caused a framework error is attached.
inline constexpr std::string_view kQVCardProcessingUnderlyingErrorKey = "kQVCardProcessingUnderlyingErrorKey";

/// Codes of that domain. No error of it carries anything but, for 2 and 4, the underlying error.
enum QVCardProcessingErrorCode : long {
    QVCardProcessingErrorNoServerURL = 1,       ///< the operation has no server URL
    QVCardProcessingErrorConnectionFailed = 2,  ///< the request to the server failed below HTTP
    QVCardProcessingErrorUnreadableResult = 3,  ///< the answer was no UTF-8 text
    QVCardProcessingErrorParseFailed = 4,       ///< the answer was no well-formed XML
};
