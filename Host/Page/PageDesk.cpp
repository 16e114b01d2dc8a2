#include "Page/PageDesk.h"

#include "Page/CardCorrection.h"
#include "Page/CardNote.h"
#include "Page/FieldKind.h"
#include "Page/PageAnswers.h"
#include "Page/PictureNames.h"
#include "Page/PileArchive.h"
#include "Page/PileJSON.h"
#include "Page/WebFiles.h"
#include "Support/Random.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <utility>

namespace qvhost {
namespace {

constexpr std::string_view kInside = "api/";
constexpr std::size_t kMaximumJSON = std::size_t{256} << 10;
constexpr std::chrono::seconds kLongestPoll{20};

constexpr const char* kTooMany =
    "There are as many cards as the page can hold. Download or save them, and remove some.";

std::vector<std::string> partsOf(std::string_view path) {
    std::vector<std::string> parts;
    while (!path.empty()) {
        const std::string_view part = path.substr(0, path.find('/'));
        parts.emplace_back(part);
        path.remove_prefix(std::min(part.size() + 1, path.size()));
    }
    return parts;
}

/// 0 for what is no number.
std::uint64_t numberIn(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

std::optional<std::string> textIn(const JSON::Value& object, const char* name) {
    if (!object.is_object() || !object.contains(name) || !object[name].is_string()) return std::nullopt;
    return object[name].get<std::string>();
}

std::optional<std::int32_t> typeIn(const JSON::Value& object) {
    const auto word = textIn(object, "kind");
    return word ? FieldKind::type(*word) : std::nullopt;
}

PageAnswer notThere() {
    return PageAnswers::problem(404, "There is nothing of that name. It may have been removed in another window.");
}

}  // namespace

PageDesk::PageDesk(PageGate gate, CardPile& pile, PictureShelf& shelf, PileSaver& saver, std::string recogniser)
    : mGate(std::move(gate)),
      mPile(pile),
      mShelf(shelf),
      mSaver(saver),
      mRecogniser(std::move(recogniser)),
      mRun(Random::uuid()) {
}

std::optional<unsigned> PageDesk::refusal(const PageRequest& head) const {
    if (mGate.entryFor(head) == PageGate::Entry::Refused) return 403;
    return std::nullopt;
}

std::size_t PageDesk::bodyLimit(const PageRequest& head) const {
    return head.path() == mGate.key().folder() + "api/pictures" ? PictureShelf::kMaximumPicture : kMaximumJSON;
}

void PageDesk::handle(const PageRequest& request, const PageAnswering& answer) {
    const PageGate::Entry entry = mGate.entryFor(request);
    if (entry == PageGate::Entry::Refused) return answer(PageAnswer::nothing(403));
    if (entry == PageGate::Entry::Door) return answer(enter());
    if (entry == PageGate::Entry::Files) return answer(file(request));
    const Path path = partsOf(request.path().substr(mGate.key().folder().size() + kInside.size()));
    if (request.method == "GET" && path == Path{"cards"}) return list(request, answer);
    answer(answerFor(request, path));
}

void PageDesk::tick() {
    mPile.bell().expire(ChangeBell::Clock::now());
}

void PageDesk::stop() {
    mPile.stop();
}

/// The key leaves the address at once, so that it stands in no history, bookmark or picture of the screen.
PageAnswer PageDesk::enter() const {
    PageAnswer answer = PageAnswer::nothing(303);
    answer.headers = {{"Location", mGate.key().folder()}, {"Set-Cookie", mGate.key().cookie()}};
    return answer;
}

PageAnswer PageDesk::file(const PageRequest& request) const {
    const WebFile* found = webFile(request.path().substr(mGate.key().folder().size()));
    if (found == nullptr) return PageAnswer::nothing(404);
    PageAnswer answer;
    answer.type = std::string(found->type);
    answer.body = std::string(found->bytes);
    return answer;
}

/// Answers when there is something new, so that nobody has to ask again and again.
void PageDesk::list(const PageRequest& request, const PageAnswering& answer) {
    const bool isSameRun = request.parameter("run") == mRun;
    const std::uint64_t seen = isSameRun ? numberIn(request.parameter("seen")) : 0;
    mPile.bell().await(seen, ChangeBell::Clock::now() + kLongestPoll, [this, answer] { answer(listNow()); });
}

PageAnswer PageDesk::listNow() const {
    const CardPile::View view = mPile.view();
    JSON::Value cards = JSON::Value::array();
    for (const CardPile::Card& card : view.cards)
        cards.push_back(PileJSON::summary(*card));
    return PageAnswers::json({
        {"run", mRun},
        {"version", view.version},
        {"done", view.done},
        {"total", view.total},
        {"addressBook", mSaver.name()},
        {"recogniser", mRecogniser},
        {"cards", std::move(cards)},
    });
}

PageAnswer PageDesk::answerFor(const PageRequest& request, const Path& path) {
    if (path.empty()) return notThere();
    if (path[0] == "pictures") return onPictures(request, path);
    if (path[0] == "pairs" && request.method == "POST") return PageAnswers::json(PictureNames::pairs(request));
    if (path[0] == "everything.zip" && request.method == "GET") return everything();
    if (path[0] == "cards") return path.size() == 1 ? onCards(request, path) : onCard(request, path);
    return notThere();
}

PageAnswer PageDesk::onPictures(const PageRequest& request, const Path& path) {
    if (path.size() == 1 && request.method == "POST") {
        const Result<ShelvedPicture> picture =
            mShelf.put(PictureNames::shown(request.parameter("name")), {request.body.begin(), request.body.end()});
        if (!picture) return PageAnswers::failure(picture.failure());
        return PageAnswers::json({{"id", picture->identifier}}, 201);
    }
    if (path.size() != 3 || request.method != "GET") return notThere();
    const auto form = path[2] == "thumbnail" ? PictureShelf::Form::Thumbnail : PictureShelf::Form::View;
    const qv::Data bytes = mShelf.bytes(path[1], form);
    if (bytes.empty()) return notThere();
    PageAnswer answer;
    answer.type = "image/jpeg";
    answer.body.assign(bytes.begin(), bytes.end());
    return answer;
}

PageAnswer PageDesk::onCards(const PageRequest& request, const Path& /*path*/) {
    return request.method == "POST" ? addCard(request) : notThere();
}

PageAnswer PageDesk::addCard(const PageRequest& request) {
    const JSON::Value body = PageAnswers::body(request);
    if (!body.is_object() || !body.contains("pictures") || !body["pictures"].is_array())
        return PageAnswer::nothing(400);
    std::vector<ShelvedPicture> pictures;
    for (const JSON::Value& identifier : body["pictures"]) {
        const auto picture = identifier.is_string() ? mShelf.find(identifier.get<std::string>()) : nullptr;
        if (!picture) return notThere();
        pictures.push_back(*picture);
    }
    if (pictures.empty() || pictures.size() > 2) return PageAnswer::nothing(400);
    const std::string identifier = mPile.add(std::move(pictures));
    if (identifier.empty()) return PageAnswers::problem(507, kTooMany);
    return PageAnswers::json({{"id", identifier}}, 201);
}

PageAnswer PageDesk::onCard(const PageRequest& request, const Path& path) {
    const std::string& identifier = path[1];
    if (path.size() == 3 && path[2] == "restore" && request.method == "POST")
        return mPile.restore(identifier) ? PageAnswers::card(mPile.find(identifier)) : notThere();
    const CardPile::Card card = mPile.find(identifier);
    if (!card) return notThere();
    if (path.size() == 2 && request.method == "DELETE") {
        mPile.remove(identifier);
        return PageAnswer::nothing(204);
    }
    if (path.size() >= 3 && path[2] == "fields") return onFields(request, path);
    if (request.method == "POST" && path.size() == 3) return act(request, path);
    return request.method == "GET" ? show(path) : notThere();
}

PageAnswer PageDesk::onFields(const PageRequest& request, const Path& path) {
    const std::uint64_t field = path.size() == 4 ? numberIn(path[3]) : 0;
    if (request.method == "DELETE") {
        return PageAnswers::card(
            mPile.change(path[1], [&](PileCard& card) { return CardCorrection::remove(card, field); }));
    }
    const JSON::Value body = PageAnswers::body(request);
    const auto type = typeIn(body);
    const auto text = textIn(body, "text");
    if (request.method == "PATCH" && (type || text)) {
        return PageAnswers::card(
            mPile.change(path[1], [&](PileCard& card) { return CardCorrection::change(card, field, type, text); }));
    }
    if (request.method == "POST" && path.size() == 3 && type && text) {
        return PageAnswers::card(
            mPile.change(path[1], [&](PileCard& card) { return CardCorrection::add(card, *type, *text); }));
    }
    return PageAnswer::nothing(400);
}

PageAnswer PageDesk::act(const PageRequest& request, const Path& path) {
    const std::string& identifier = path[1];
    const std::string& action = path[2];
    const CardPile::Card card = mPile.find(identifier);
    if (!card) return notThere();
    if (action == "read") return PageAnswers::card(mPile.readAgain(identifier, card->pictures));
    if (action == "swap" && card->pictures.size() == 2)
        return PageAnswers::card(mPile.readAgain(identifier, {card->pictures[1], card->pictures[0]}));
    if (action == "split") return PageAnswers::card(mPile.split(identifier));
    if (action == "back") {
        const auto other = textIn(PageAnswers::body(request), "card");
        return PageAnswers::card(other ? mPile.join(identifier, *other) : nullptr);
    }
    if (action == "save") return PageAnswers::card(mSaver.save(identifier));
    return notThere();
}

PageAnswer PageDesk::show(const Path& path) const {
    const CardPile::Card card = mPile.find(path[1]);
    if (!card) return notThere();
    if (path.size() == 2) return PageAnswers::card(card);
    const std::string name = PileArchive::folderName(numberIn(card->identifier), *card);
    if (path[2] == "contact.vcf") return PageAnswers::download(CardNote::vCard(*card), "text/vcard", name + ".vcf");
    const QVString note = path[2] == "note" ? CardNote::page(*card, mShelf) : CardNote::markup(*card);
    if (!note) return PageAnswers::problem(500, "The note's template could not be read. Install the program again.");
    if (path[2] == "note.qvml") return PageAnswers::download(*note, "application/octet-stream", name + ".qvml");
    if (path[2] != "note") return notThere();
    PageAnswer answer;
    answer.type = "text/html; charset=utf-8";
    answer.body = *note;
    answer.isNote = true;
    return answer;
}

PageAnswer PageDesk::everything() const {
    std::vector<CardPile::Card> cards;
    for (const CardPile::Card& card : mPile.view().cards) {
        if (!card->fields.empty()) cards.push_back(card);
    }
    if (cards.empty()) return PageAnswers::problem(409, "There is no finished card yet.");
    const Result<std::filesystem::path> file = PileArchive::write(cards, mShelf);
    if (!file) return PageAnswers::failure(file.failure());
    PageAnswer answer = PageAnswers::download("", "application/zip", "cards.zip");
    answer.file = *file;
    return answer;
}

}  // namespace qvhost
