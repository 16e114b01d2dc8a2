#include "Support/FakeCardDAVServer.h"

#include <algorithm>
#include <cctype>
#include <mutex>
#include <sstream>
#include <utility>

namespace testsupport {

namespace {

constexpr std::string_view kBook = "/dav/books/ada/contacts/";

struct Stored {
    std::string bytes;
    int version = 0;
};

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '&') {
            result += "&amp;";
        } else if (c == '<') {
            result += "&lt;";
        } else {
            result += c;
        }
    }
    return result;
}

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

/// Between two marks, all of them.
std::vector<std::string> between(const std::string& text, const std::string& begin, const std::string& end) {
    std::vector<std::string> found;
    for (std::size_t at = text.find(begin); at != std::string::npos; at = text.find(begin, at)) {
        at += begin.size();
        found.push_back(text.substr(at, text.find(end, at) - at));
    }
    return found;
}

std::string withoutEscapes(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '%' && i + 2 < text.size();
        result += isEscape ? static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16)) : text[i];
        if (isEscape) i += 2;
    }
    return result;
}

std::string withEscapes(const std::string& text) {
    std::ostringstream result;
    for (const char c : text) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '.' || c == '_') {
            result << c;
        } else {
            result << '%' << std::hex << std::uppercase << static_cast<int>(static_cast<unsigned char>(c));
        }
    }
    return result.str();
}

std::string found(const std::string& href, const std::string& properties) {
    return "<d:response><d:href>" + href + "</d:href><d:propstat><d:prop>" + properties +
           "</d:prop><d:status>HTTP/1.1 200 OK</d:status></d:propstat></d:response>";
}

std::string sorted(const std::string& card) {
    std::vector<std::string> lines;
    std::istringstream text(card);
    for (std::string line; std::getline(text, line);) {
        // A folded line stays with its beginning.
        if (line.starts_with(' ') && !lines.empty()) {
            lines.back() += line + '\n';
        } else {
            lines.push_back(line + '\n');
        }
    }
    // BEGIN and VERSION before, END behind.
    if (lines.size() > 3) std::sort(lines.begin() + 2, lines.end() - 1);
    std::string result;
    for (const std::string& line : lines)
        result += line;
    return result;
}

}  // namespace

struct FakeCardDAVServer::State {
    mutable std::mutex mutex;
    std::map<std::string, Stored> cards;
    int versions = 0;
    CardDAVHabits habits;
    /// Shared, so that what it remembers is not copied.
    std::shared_ptr<Interceptor> interceptor;

    void store(const std::string& name, const std::string& bytes) {
        cards[name] = {habits.sortsLines ? sorted(bytes) : bytes, ++versions};
    }
    std::string ETag(const Stored& card) const { return "\"v" + std::to_string(card.version) + "\""; }
    std::string headers(const Stored& card, bool isWanted) const {
        return isWanted ? "ETag: " + ETag(card) + "\r\n" : "";
    }
    std::string response(const std::string& name, const Stored& card, bool withData) const {
        std::string properties = habits.sendsETags ? "<d:getetag>" + escaped(ETag(card)) + "</d:getetag>" : "";
        if (withData) properties += "<c:address-data>" + escaped(card.bytes) + "</c:address-data>";
        return found(std::string(kBook) + withEscapes(name), properties);
    }

    void serve(ScriptedConnection& connection, const ScriptedRequest& request);
    std::string answer(const ScriptedRequest& request);
    std::string propfind(const ScriptedRequest& request) const;
    std::string report(const ScriptedRequest& request) const;
    std::string query(const ScriptedRequest& request) const;
    std::string multiget(const ScriptedRequest& request) const;
    std::string get(const ScriptedRequest& request) const;
    std::string put(const ScriptedRequest& request);
    bool breaksCondition(const ScriptedRequest& request, const std::string& name) const;
};

void FakeCardDAVServer::State::serve(ScriptedConnection& connection, const ScriptedRequest& request) {
    std::shared_ptr<Interceptor> intercept;
    {
        const std::lock_guard lock(mutex);
        intercept = interceptor;
    }
    if (const auto instead = intercept ? (*intercept)(request) : std::nullopt) return connection.write(*instead);
    const std::lock_guard lock(mutex);
    const bool isPut = request.method == "PUT";
    if (isPut && habits.putsToLose > 0) {
        --habits.putsToLose;
        return connection.reset();
    }
    const std::string bytes = answer(request);
    if (isPut && habits.answersToLose > 0) {
        --habits.answersToLose;
        return connection.reset();
    }
    connection.write(bytes);
}

std::string FakeCardDAVServer::State::answer(const ScriptedRequest& request) {
    if (habits.authorization && request.header("Authorization") != habits.authorization) {
        return ScriptedServer::answer(401, "Who is it?", "WWW-Authenticate: Basic realm=\"cards\"\r\n");
    }
    if (request.target == "/.well-known/carddav") return ScriptedServer::answer(301, "", "Location: /dav/\r\n");
    if (!request.target.starts_with("/dav/")) return ScriptedServer::answer(404, "");
    if (request.method == "PROPFIND") return propfind(request);
    if (!request.target.starts_with(kBook)) return ScriptedServer::answer(405, "");
    if (request.method == "REPORT") return report(request);
    if (request.method == "GET") return get(request);
    return request.method == "PUT" ? put(request) : ScriptedServer::answer(405, "");
}

std::string FakeCardDAVServer::State::propfind(const ScriptedRequest& request) const {
    const bool isDeep = request.header("Depth") == "1";
    const std::string book =
        found(std::string(kBook), "<d:resourcetype><d:collection/><c:addressbook/></d:resourcetype>");
    const std::string collection = "<d:resourcetype><d:collection/></d:resourcetype>";
    if (request.target == "/dav/") {
        return multistatus(found("/dav/", collection + "<d:current-user-principal><d:href>/dav/users/ada/</d:href>"
                                                       "</d:current-user-principal>"));
    }
    if (request.target == "/dav/users/ada/") {
        return multistatus(found(request.target,
                                 "<c:addressbook-home-set><d:href>/dav/books/ada/</d:href>"
                                 "</c:addressbook-home-set>"));
    }
    if (request.target == "/dav/books/ada/") {
        return multistatus(found(request.target, collection) + (isDeep ? book : ""));
    }
    if (request.target != kBook) return ScriptedServer::answer(404, "");
    std::string responses = book;
    for (const auto& [name, card] : cards)
        responses += isDeep ? response(name, card, /*withData=*/false) : "";
    return multistatus(responses);
}

std::string FakeCardDAVServer::State::report(const ScriptedRequest& request) const {
    const bool isQuery = request.body.find("addressbook-query") != std::string::npos;
    if (isQuery ? !habits.searches : !habits.fetchesMany) return ScriptedServer::answer(500, "");
    return isQuery ? query(request) : multiget(request);
}

std::string FakeCardDAVServer::State::query(const ScriptedRequest& request) const {
    const std::string property = between(request.body, "prop-filter name=\"", "\"").front();
    const std::string text = lowerCase(between(request.body, "<C:text-match>", "</C:text-match>").front());
    std::string responses;
    for (const auto& [name, card] : cards) {
        std::istringstream lines(card.bytes);
        bool isMatch = false;
        for (std::string line; std::getline(lines, line);)
            isMatch |= line.starts_with(property) && lowerCase(line).find(text) != std::string::npos;
        if (isMatch && !habits.findsNothing) responses += response(name, card, /*withData=*/true);
    }
    return multistatus(responses);
}

std::string FakeCardDAVServer::State::multiget(const ScriptedRequest& request) const {
    std::string responses;
    for (const std::string& href : between(request.body, "<href>", "</href>")) {
        const auto card = cards.find(withoutEscapes(href.substr(href.rfind('/') + 1)));
        responses += card == cards.end() ? "<d:response><d:href>" + href +
                                               "</d:href><d:status>HTTP/1.1 404 Not Found</d:status></d:response>"
                                         : response(card->first, card->second, /*withData=*/true);
    }
    return multistatus(responses);
}

std::string FakeCardDAVServer::State::get(const ScriptedRequest& request) const {
    const auto card = cards.find(withoutEscapes(request.target.substr(kBook.size())));
    if (card == cards.end()) return ScriptedServer::answer(404, "");
    const std::string tag = headers(card->second, habits.sendsETags);
    if (habits.sendsETags && request.header("If-None-Match") == ETag(card->second)) {
        return "HTTP/1.1 304 Not Modified\r\n" + tag + "\r\n";
    }
    return ScriptedServer::answer(200, card->second.bytes, tag + "Content-Type: text/vcard\r\n");
}

bool FakeCardDAVServer::State::breaksCondition(const ScriptedRequest& request, const std::string& name) const {
    const auto card = cards.find(name);
    const auto match = request.header("If-Match");
    if (request.header("If-None-Match") == "*" && card != cards.end()) return true;
    return match && (card == cards.end() || ETag(card->second) != *match);
}

std::string FakeCardDAVServer::State::put(const ScriptedRequest& request) {
    const std::string name = withoutEscapes(request.target.substr(kBook.size()));
    if (habits.keepsConditions && breaksCondition(request, name)) return ScriptedServer::answer(412, "");
    const bool isNew = !cards.contains(name);
    store(name, request.body);
    return ScriptedServer::answer(isNew ? 201 : 204, "",
                                  headers(cards[name], habits.sendsETags && habits.sendsETagsForPuts));
}

FakeCardDAVServer::FakeCardDAVServer() : mState(std::make_shared<State>()) {
    mServer.handle([state = mState](ScriptedConnection& connection, const ScriptedRequest& request) {
        state->serve(connection, request);
    });
}

FakeCardDAVServer::~FakeCardDAVServer() = default;

void FakeCardDAVServer::putCard(const std::string& name, const std::string& bytes) {
    const std::lock_guard lock(mState->mutex);
    mState->store(name, bytes);
}

void FakeCardDAVServer::removeCard(const std::string& name) {
    const std::lock_guard lock(mState->mutex);
    mState->cards.erase(name);
}

std::map<std::string, std::string> FakeCardDAVServer::cards() const {
    const std::lock_guard lock(mState->mutex);
    std::map<std::string, std::string> bytes;
    for (const auto& [name, card] : mState->cards)
        bytes.emplace(name, card.bytes);
    return bytes;
}

void FakeCardDAVServer::setHabits(const CardDAVHabits& habits) {
    const std::lock_guard lock(mState->mutex);
    mState->habits = habits;
}

void FakeCardDAVServer::setInterceptor(Interceptor interceptor) {
    const std::lock_guard lock(mState->mutex);
    mState->interceptor = interceptor ? std::make_shared<Interceptor>(std::move(interceptor)) : nullptr;
}

std::vector<ScriptedRequest> FakeCardDAVServer::requests(std::string_view method) const {
    auto all = mServer.requests();
    std::erase_if(all, [&](const ScriptedRequest& request) { return request.method != method; });
    return all;
}

std::string FakeCardDAVServer::multistatus(const std::string& responses) {
    return ScriptedServer::answer(207,
                                  "<?xml version=\"1.0\"?><d:multistatus xmlns:d=\"DAV:\" "
                                  "xmlns:c=\"urn:ietf:params:xml:ns:carddav\">" +
                                      responses + "</d:multistatus>",
                                  "Content-Type: application/xml\r\n");
}

}  // namespace testsupport
