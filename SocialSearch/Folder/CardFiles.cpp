#include "Folder/CardFiles.h"

#include "QVPlatform/Text.h"
#include "QVSocialSearch/QVVCardProfile.h"

#include <algorithm>

namespace {

bool isCardName(const std::string& name) {
    return !name.starts_with('.') && qv::Text::lowercased(name).ends_with(".vcf");
}

}  // namespace

std::string CardFile::UID() const {
    return qv::uidOfCard(card).value_or(file.stem().string());
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
    problems.add(file.string(), problem, /*isBroken=*/content.state != FileState::Unreadable);
    return std::nullopt;
}

void visitCards(const std::filesystem::path& folder, Problems& problems, const std::function<bool(CardFile&)>& visit) {
    const auto files = filesOfCards(folder);
    if (!files) return problems.add(folder.string(), "the folder cannot be read", /*isBroken=*/false);
    for (const std::filesystem::path& file : *files) {
        std::optional<CardFile> card = readCardFile(file, problems);
        if (card && !visit(*card)) return;
    }
}
