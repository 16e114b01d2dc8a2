// Repair of e-mail addresses: nothing but allowed characters, and at most one dot more.

#include "QVCardScan/QVCardScanResultFormatter.h"
#include "Support/Input.h"
#include "Support/Require.h"

using fuzzing::require;
using Formatter = QVCardScanResultFormatter;

namespace {

/// Whether `longer` is `text`, or that with one dot more.
bool hasAtMostADotMore(const std::string& text, const std::string& longer) {
    if (longer == text) return true;
    if (longer.size() != text.size() + 1) return false;
    std::size_t same = 0;
    while (same < text.size() && text[same] == longer[same])
        ++same;
    return longer[same] == '.' && longer.substr(same + 1) == text.substr(same);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    const std::string text = fuzzing::textOf(bytes, count);
    const std::string email = *Formatter::normalizedEmailForEmail(text);
    require(email.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789.+-_@") == std::string::npos,
            "an address has only its characters");
    require(Formatter::normalizedEmailForEmail(email) == email, "a repaired address stays as it is");

    const std::string clean = *Formatter::sanitizeEmailString(text);
    require(Formatter::sanitizeEmailString(clean) == clean, "what is sanitized stays as it is");
    require(hasAtMostADotMore(clean, *Formatter::fixWrongTLDIfAny(clean)), "the repair puts in one dot at most");
    if (!fuzzing::isUTF8(text)) return 0;
    require(hasAtMostADotMore(text, *Formatter::fixWrongTLDIfAny(text)), "the repair puts in one dot at most");
    return 0;
}
