#include "Guarded.h"
#include "QVPlatform/Bundle.h"

#include <langinfo.h>
#include <libintl.h>

#include <array>
#include <memory>
#include <mutex>
#include <utility>

namespace qv {

namespace {

/// Never destroyed: threads may still look words up while the process ends.
struct State {
    std::mutex mutex;
    std::shared_ptr<const Bundle::Localizer> localizer;
};

State& state() {
    static State* const shared = new State;
    return *shared;
}

bool isUTF8(std::string_view codeSet) {
    return codeSet == "UTF-8" || codeSet == "utf-8" || codeSet == "UTF8" || codeSet == "utf8";
}

/// Whether the words of a text domain come as UTF-8: by its own code set, or else by the locale's.
bool speaksUTF8(const char* domain) {
    const char* codeSet = ::bind_textdomain_codeset(domain, nullptr);
    return isUTF8(codeSet ? codeSet : ::nl_langinfo(CODESET));
}

/// The host's catalogue; nothing when it has no word.
std::optional<std::string> gettextWord(std::string_view key) {
    // The empty key is the catalogue's own header.
    if (key.empty() || key.find('\0') != std::string_view::npos) return std::nullopt;
    const char* domain = ::textdomain(nullptr);
    if (!domain || !speaksUTF8(domain)) return std::nullopt;
    const std::string text(key);
    return ::dgettext(domain, text.c_str());
}

std::shared_ptr<const Bundle::Localizer> hostLocalizer() {
    const std::lock_guard lock(state().mutex);
    return state().localizer;
}

}  // namespace

void Bundle::setLocalizer(Localizer localizer) {
    auto replacement = localizer ? std::make_shared<const Localizer>(std::move(localizer)) : nullptr;
    const std::lock_guard lock(state().mutex);
    state().localizer.swap(replacement);
}

std::string Bundle::localizedString(std::string_view key) {
    std::optional<std::string> word;
    runGuarded("the host's localizer", [&] {
        const auto localizer = hostLocalizer();
        word = localizer ? (*localizer)(key) : gettextWord(key);
    });
    return word.value_or(std::string(key));
}

}  // namespace qv
