#include "CardDAV/DAVDiscovery.h"

#include "AddressBook/AddressBookProblems.h"
#include "CardDAV/DAVAddress.h"
#include "CardDAV/DAVBodies.h"
#include "CardDAV/DAVErrors.h"

#include <utility>

namespace {

constexpr std::size_t kLargestAnswer = std::size_t{4} << 20;
constexpr long kMultistatus = 207;
constexpr long kUnauthorized = 401;
constexpr long kForbidden = 403;

bool isGone(long status) {
    return status == 404 || status == 410;
}

qv::Error noBook(const qv::URL& url) {
    return addressBookError(QVAddressBookErrorUnreadable,
                            url.absoluteString() + ": the server knows of no address book there");
}

/// Those that may be written come first, then the order of addresses decides, which stays from run to run.
std::pair<bool, std::string> rankOf(const DAVResource& book, const qv::URL& url) {
    return {book.tellsPrivileges && !book.isWritable, plainPath(url)};
}

}  // namespace

std::optional<qv::URL> DAVDiscovery::collection() {
    const qv::URL& server = mClient.server();
    const auto wellKnown = qv::URL::URLWithString("/.well-known/carddav", /*relativeToURL=*/server);
    // Where only the host was given, the well-known address is the better start.
    const bool hasPath = server.path() != "/";
    if (hasPath) {
        if (auto found = startingFrom(server)) return found;
    }
    if (wellKnown && !mIsOver) {
        if (auto found = startingFrom(*wellKnown)) return found;
    }
    return hasPath || mIsOver ? std::nullopt : startingFrom(server);
}

std::optional<DAVDiscovery::Page> DAVDiscovery::ask(const qv::URL& url, bool withMembers) {
    const DAVAnswer answer = mClient.send(
        {.method = "PROPFIND",
         .url = url,
         .headers = {{"Depth", withMembers ? "1" : "0"}, {"Content-Type", "application/xml; charset=utf-8"}},
         .body = wayBody()},
        kLargestAnswer);
    if (!answer.isSuccess()) {
        const bool saysMuch = answer.failure || answer.status == kUnauthorized || answer.status == kForbidden;
        const bool isWrongPath =
            url == mClient.server() && (isGone(answer.status) || answer.status == kForbidden) && url.path() != "/";
        mIsOver = mIsOver || answer.isUnanswered || answer.status == kUnauthorized || isWrongPath;
        return fail(answer.error(/*isWriting=*/false), saysMuch ? Weight::Much : Weight::Little);
    }
    auto resources = answer.status == kMultistatus ? resourcesOfMultistatus(answer.body) : std::nullopt;
    if (!resources || resources->empty()) return fail(notCardDAV(answer.url), Weight::Little);
    return Page{answer.url, *std::move(resources)};
}

std::optional<qv::URL> DAVDiscovery::startingFrom(const qv::URL& url) {
    const std::optional<Page> page = ask(url, /*withMembers=*/false);
    if (!page) return std::nullopt;
    const DAVResource& resource = page->resources.front();
    if (resource.isAddressBook) return asCollection(page->url);
    if (!resource.home.empty()) return throughHome(*page, resource.home);
    if (resource.isCollection && page->url.path() != "/") {
        if (auto book = firstBookIn(page->url)) return book;
    }
    return resource.principal.empty() ? fail(noBook(page->url), Weight::Much) : throughUser(*page, resource.principal);
}

std::optional<qv::URL> DAVDiscovery::throughUser(const Page& page, const std::string& principal) {
    const std::optional<qv::URL> url = resolve(page, principal);
    const std::optional<Page> user = url ? ask(*url, /*withMembers=*/false) : std::nullopt;
    if (!user) return std::nullopt;
    const std::string& home = user->resources.front().home;
    return home.empty() ? fail(noBook(user->url), Weight::Much) : throughHome(*user, home);
}

std::optional<qv::URL> DAVDiscovery::throughHome(const Page& page, const std::string& home) {
    const std::optional<qv::URL> url = resolve(page, home);
    return url ? firstBookIn(asCollection(*url)) : std::nullopt;
}

std::optional<qv::URL> DAVDiscovery::firstBookIn(const qv::URL& home) {
    const std::optional<Page> page = ask(home, /*withMembers=*/true);
    if (!page) return std::nullopt;
    std::optional<qv::URL> first;
    std::pair<bool, std::string> rank;
    for (const DAVResource& resource : page->resources) {
        const std::optional<qv::URL> url = resource.isAddressBook ? resolve(*page, resource.href) : std::nullopt;
        if (!url || (first && rank <= rankOf(resource, *url))) continue;
        first = asCollection(*url);
        rank = rankOf(resource, *url);
    }
    return first ? first : fail(noBook(page->url), Weight::Much);
}

std::optional<qv::URL> DAVDiscovery::resolve(const Page& page, const std::string& href) {
    auto url = qv::URL::URLWithString(href, /*relativeToURL=*/page.url);
    if (url && mClient.server().isSameOriginAs(*url)) return url;
    return fail(elsewhere(page.url, url), Weight::Much);
}

std::nullopt_t DAVDiscovery::fail(qv::Error error, Weight weight) {
    // Of two that say little the one about the address that was given is told.
    const bool laterCounts = weight == Weight::Little && mClient.server().path() == "/";
    if (weight > mWeight || (weight == mWeight && laterCounts)) {
        mError = std::move(error);
        mWeight = weight;
    }
    return std::nullopt;
}
