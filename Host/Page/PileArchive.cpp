#include "Page/PileArchive.h"

#include "Output/ResultFolder.h"
#include "Page/CardNote.h"
#include "Page/ZipFile.h"
#include "Support/FileWriting.h"

#include <cstdio>
#include <string>
#include <system_error>
#include <utility>

namespace qvhost::PileArchive {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestName = 60;

/// Characters that every file system and every program that unpacks takes; those beyond ASCII stay as they are.
bool isSafe(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' ||
           c == ' ';
}

std::string safeName(const std::string& text) {
    std::string name;
    for (const char c : text) {
        const bool isBlank = !isSafe(c) || c == ' ';
        if (isBlank && (name.empty() || name.back() == ' ')) continue;
        name += isBlank ? ' ' : c;
    }
    if (name.size() > kLongestName) {
        std::size_t end = kLongestName;
        // Not within a character.
        while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U)
            --end;
        name.resize(end);
    }
    while (name.ends_with(' '))
        name.pop_back();
    return name;
}

/// A folder that goes with this object, except for the file that was asked for.
class WorkFolder {
  public:
    explicit WorkFolder(fs::path path) : mPath(std::move(path)) {}
    ~WorkFolder() {
        std::error_code ignored;
        fs::remove_all(mPath, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const fs::path& path() const { return mPath; }

  private:
    fs::path mPath;
};

std::optional<Failure> writeCard(const PileCard& card, const PictureShelf& shelf, const fs::path& folder,
                                 std::string& contacts) {
    const ScanOutcome outcome = CardNote::outcome(card);
    std::vector<CardPicture> pictures;
    for (const ShelvedPicture& picture : card.pictures) {
        Result<CardPicture> opened = shelf.picture(picture);
        if (!opened) return opened.failure();
        pictures.push_back(std::move(*opened));
    }
    const ResultFolder results(folder);
    if (auto failure = results.make()) return failure;
    if (auto failure = results.write(outcome, Resources(pictures, *outcome.response))) return failure;
    const std::string vCard = CardNote::vCard(card);
    contacts += vCard;
    return writeFile(folder / "contact.vcf", vCard);
}

}  // namespace

std::string folderName(std::size_t number, const PileCard& card) {
    char digits[24];
    (void)std::snprintf(digits, sizeof digits, "%03zu", number);
    const std::string name = safeName(CardNote::contact(card)->fullName().value_or(""));
    return digits + (name.empty() ? std::string() : " " + name);
}

Result<fs::path> write(const std::vector<CardPile::Card>& cards, const PictureShelf& shelf) {
    const WorkFolder work(shelf.workFolder());
    std::string contacts;
    std::size_t number = 0;
    for (const CardPile::Card& card : cards) {
        const fs::path folder = work.path() / folderName(++number, *card);
        if (auto failure = writeCard(*card, shelf, folder, contacts)) return *failure;
    }
    if (auto failure = writeFile(work.path() / "contacts.vcf", contacts)) return *failure;
    fs::path file = shelf.workFolder();
    file += ".zip";
    if (auto failure = writeZip(file, work.path())) return *failure;
    return file;
}

}  // namespace qvhost::PileArchive
