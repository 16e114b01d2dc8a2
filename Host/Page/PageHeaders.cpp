#include "Page/PageHeaders.h"

namespace qvhost {
namespace {

constexpr const char* kPagePolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob:; connect-src 'self'; "
    "frame-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

/// The note brings its own styles, and its pictures in itself. Its links open elsewhere.
constexpr const char* kNotePolicy =
    "sandbox allow-popups allow-popups-to-escape-sandbox; default-src 'none'; img-src data:; "
    "style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'; frame-ancestors 'self'";

}  // namespace

std::vector<std::pair<std::string, std::string>> pageHeaders(const PageAnswer& answer) {
    std::vector<std::pair<std::string, std::string>> headers = {
        {"Cache-Control", "no-store"},
        {"X-Content-Type-Options", "nosniff"},
        {"Referrer-Policy", "no-referrer"},
        {"Cross-Origin-Resource-Policy", "same-origin"},
        {"Cross-Origin-Opener-Policy", "same-origin"},
        {"X-Frame-Options", answer.isNote ? "SAMEORIGIN" : "DENY"},
        {"Content-Security-Policy", answer.isNote ? kNotePolicy : kPagePolicy},
    };
    if (!answer.type.empty()) headers.emplace_back("Content-Type", answer.type);
    headers.insert(headers.end(), answer.headers.begin(), answer.headers.end());
    return headers;
}

}  // namespace qvhost
