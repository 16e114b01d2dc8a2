#include "Batch/BatchPlan.h"

#include "QVPlatform/MD5.h"
#include "QVPlatform/Text.h"
#include "Support/FileReading.h"

#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace qvhost {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestName = 100;
constexpr std::size_t kMaximumPictureSize = std::size_t{256} * 1024 * 1024;

/// What is kept of a record while all of them are compared.
struct Finished {
    std::string name;
    std::vector<PictureState> pictures;
    bool fulfilsWishes = false;
};

bool fulfils(const CardRecord& record, const BatchWishes& wishes) {
    const bool isSaved = wishes.savesIn.empty() || record.savedIn() == wishes.savesIn;
    const bool isSearched = !wishes.searches || record.object.contains("search");
    const bool isCompared = !wishes.comparesContacts || record.object.contains("merged");
    return record.isComplete() && isSaved && isSearched && isCompared &&
           stringIn(record.object, "language") == wishes.language.value_or("");
}

std::string hashOf(const fs::path& file) {
    const auto bytes = readFile(file, kMaximumPictureSize);
    return bytes ? qv::lowerHexMD5(*bytes) : "";
}

bool isSame(const fs::path& file, const PictureState& before) {
    const auto now = PictureState::of(file);
    if (!now || now->size != before.size) return false;
    if (now->file == before.file && now->modified == before.modified) return true;
    return !before.hash.empty() && hashOf(file) == before.hash;
}

class Planner {
  public:
    Planner(const BatchFolder& folder, const BatchWishes& wishes) {
        for (const std::string& name : folder.cards()) {
            mNames.insert(qv::Text::lowercased(name));
            if (auto record = CardRecord::read(folder.folderOf(name)))
                mFinished.push_back({name, std::move(record->pictures), fulfils(*record, wishes)});
        }
        for (const Finished& finished : mFinished) {
            mByFile.emplace(finished.pictures.front().file, &finished);
            mBySize.emplace(finished.pictures.front().size, &finished);
        }
    }

    void take(std::vector<BatchCard> cards, BatchPlan& plan) {
        std::vector<std::pair<BatchCard, const Finished*>> open;
        for (BatchCard& card : cards) {
            const Finished* finished = findFinished(card);
            if (finished != nullptr && finished->fulfilsWishes && hasPicturesOf(card, *finished)) {
                ++plan.finished;
            } else {
                open.emplace_back(std::move(card), finished);
            }
        }
        for (auto& [card, finished] : open) {
            std::string name = finished != nullptr ? finished->name : unusedName(folderNameFor(card.front));
            plan.cards.push_back({std::move(name), std::move(card)});
        }
    }

  private:
    /// Each stands for one card only.
    const Finished* findFinished(const BatchCard& card) {
        const auto state = PictureState::of(card.front);
        if (!state) return nullptr;
        const auto byFile = mByFile.find(state->file);
        if (byFile != mByFile.end() && mTaken.insert(byFile->second).second) return byFile->second;
        const auto [first, last] = mBySize.equal_range(state->size);
        for (auto entry = first; entry != last; ++entry) {
            if (!mTaken.contains(entry->second) && hasPicturesOf(card, *entry->second)) {
                mTaken.insert(entry->second);
                return entry->second;
            }
        }
        return nullptr;
    }

    static bool hasPicturesOf(const BatchCard& card, const Finished& finished) {
        const std::size_t count = card.back ? 2 : 1;
        if (finished.pictures.size() != count || !isSame(card.front, finished.pictures[0])) return false;
        return !card.back || isSame(*card.back, finished.pictures[1]);
    }

    /// Whether two names are the same is not left to the file system, some of which do not tell case.
    std::string unusedName(const std::string& name) {
        std::string unused = name;
        for (std::size_t number = 2; !mNames.insert(qv::Text::lowercased(unused)).second; ++number)
            unused = name + "-" + std::to_string(number);
        return unused;
    }

    std::vector<Finished> mFinished;
    std::map<std::string, const Finished*> mByFile;
    std::multimap<std::uintmax_t, const Finished*> mBySize;
    std::set<const Finished*> mTaken;
    std::set<std::string> mNames;
};

/// At most so many bytes, cut between characters.
void shorten(std::string& text, std::size_t limit) {
    if (text.size() <= limit) return;
    while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xC0) == 0x80)
        --limit;
    text.resize(limit);
}

}  // namespace

std::string folderNameFor(const fs::path& front) {
    constexpr std::string_view kTroublesome = "/\\<>:\"|?*\x7F";
    std::string name = qv::Text::utf8(qv::Text::utf16(front.stem().string()));
    for (char& c : name) {
        if (static_cast<unsigned char>(c) < 0x20 || kTroublesome.find(c) != std::string_view::npos) c = '_';
    }
    shorten(name, kLongestName);
    while (!name.empty() && (name.back() == '.' || name.back() == ' '))
        name.pop_back();
    // Neither hidden nor an option, nor a folder's own.
    if (!name.empty() && (name.front() == '.' || name.front() == '-' || name.front() == ' ')) name.front() = '_';
    return name.empty() ? "card" : name;
}

BatchPlan BatchPlan::make(const BatchFolder& folder, std::vector<BatchCard> cards, const BatchWishes& wishes) {
    BatchPlan plan;
    Planner(folder, wishes).take(std::move(cards), plan);
    return plan;
}

}  // namespace qvhost
