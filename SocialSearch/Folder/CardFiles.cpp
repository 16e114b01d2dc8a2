#include "Folder/CardFiles.h"

#include "QVPlatform/Text.h"
#include "QVSocialSearch/QVVCardProfile.h"

#include <algorithm>

namespace {

constexpr std::size_t kProblemsTold = 5;

bool isCardName(const std::string& name) {
    return !name.starts_with('.') && qv::Text::lowercased(name).ends_with(".vcf");
}

}  // namespace

std::string CardFile::UID() const {
    return qv::uidOfCard(card).value_or(file.stem().string());
}

qv::Error addressBookError(QVAddressBookErrorCode code, std::string description) {
    qv::Error error{.domain = std::string(kQVAddressBookErrorDomain), .code = code, .userInfo = {}};
    error.userInfo[std::string(qv::kErrorDescriptionKey)] = std::move(description);
    return error;
}

void Problems::add(const std::filesystem::path& file, const std::string& what, bool isBroken) {
    mAllAreBroken = mAllAreBroken && isBroken;
    if (++mCount > kProblemsTold) return;
    mText += (mText.empty() ? "" : "; ") + file.string() + ": " + what;
}

std::optional<qv::Error> Problems::error() const {
    if (mCount == 0) return std::nullopt;
    const std::string more = mCount > kProblemsTold ? "; and " + std::to_string(mCount - kProblemsTold) + " more" : "";
    return addressBookError(mAllAreBroken ? QVAddressBookErrorBrokenRecord : QVAddressBookErrorUnreadable,
                            mText + more);
}

std::optional<std::vector<std::filesystem::path>> filesOfCards(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        if (isCardName(entry->path().filename().string())) files.push_back(entry->path());
    }
    if (error) return std::nullopt;
    std::sort(files.begin(), files.end());
    return files;
}

std::optional<CardFile> readCardFile(const std::filesystem::path& file, Problems& problems) {
    FileContent content = readFileContent(file, QVVCard::kMaximumSize);
    if (content.state == FileState::Missing) return std::nullopt;
    std::string problem = content.state == FileState::TooLarge ? "it is too large" : "it cannot be opened and read";
    if (content.state == FileState::Read) {
        if (std::optional<QVVCard> card = QVVCard::cardWithBytes(content.bytes, &problem))
            return CardFile{file, std::move(content.bytes), content.mode, *std::move(card)};
    }
    problems.add(file, problem, /*isBroken=*/content.state != FileState::Unreadable);
    return std::nullopt;
}

void visitCards(const std::filesystem::path& folder, Problems& problems, const std::function<bool(CardFile&)>& visit) {
    const auto files = filesOfCards(folder);
    if (!files) return problems.add(folder, "the folder cannot be read", /*isBroken=*/false);
    for (const std::filesystem::path& file : *files) {
        std::optional<CardFile> card = readCardFile(file, problems);
        if (card && !visit(*card)) return;
    }
}
