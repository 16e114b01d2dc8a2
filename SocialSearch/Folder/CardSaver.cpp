#include "Folder/CardSaver.h"

#include "AddressBook/RecordName.h"
#include "QVSocialSearch/QVVCardProfile.h"

#include <cerrno>
#include <system_error>

namespace {

constexpr int kAttempts = 20;

QVAddressBookSaveResult failed(QVAddressBookErrorCode code, std::string description) {
    return {.error = addressBookError(code, std::move(description)), .UID = std::nullopt};
}

QVAddressBookSaveResult nothingToSave() {
    return failed(QVAddressBookErrorNoProfile, "There is nothing to save");
}

QVAddressBookSaveResult unwritable(const std::filesystem::path& file) {
    return failed(QVAddressBookErrorUnwritable,
                  file.string() + ": it cannot be written: " + std::generic_category().message(errno));
}

}  // namespace

CardSaver::CardSaver(std::filesystem::path folder, const QVSocialProfile& profile, WillReplace willReplace)
    : mFolder(std::move(folder)), mProfile(profile), mWillReplace(std::move(willReplace)) {
    const bool isRecord = (profile.profileType() & QVSocialProfileSourceAddressBook) != 0;
    mHasRecord = isRecord && !profile.addressBookUID().value_or("").empty();
    mUID = mHasRecord ? *profile.addressBookUID() : newUUID();
}

QVAddressBookSaveResult CardSaver::save() {
    if (!mHasRecord && !qv::profileHasContents(mProfile)) return nothingToSave();
    std::error_code error;
    std::filesystem::create_directory(mFolder, error);
    const FolderLock lock(mFolder);
    if (lock.state() == FolderLock::State::Unreadable)
        return failed(QVAddressBookErrorUnwritable, mFolder.string() + ": the folder cannot be opened");
    if (lock.state() == FolderLock::State::Busy)
        return failed(QVAddressBookErrorConflict, mFolder.string() + ": others do not stop writing");
    // Whoever left a file behind held the lock while it was his.
    if (lock.state() == FolderLock::State::Locked) removeLeftovers();
    for (int i = 0; i < kAttempts; ++i) {
        if (const Attempt result = attempt()) return *result;
    }
    return failed(QVAddressBookErrorConflict, mFolder.string() + ": others kept changing the record " + mUID);
}

CardSaver::Attempt CardSaver::attempt() {
    if (std::optional<CardFile> record = findRecord()) return update(*record);
    const std::filesystem::path broken = brokenRecord();
    if (broken.empty()) return create();
    return failed(QVAddressBookErrorBrokenRecord, broken.string() + ": it is not well formed and was left as it is");
}

std::optional<CardFile> CardSaver::findRecord() {
    if (!mHasRecord) return std::nullopt;
    Problems problems;
    std::optional<CardFile> found;
    visitCards(mFolder, problems, [&](CardFile& file) {
        if (file.UID() == mUID) found = std::move(file);
        return !found;
    });
    return found;
}

std::filesystem::path CardSaver::brokenRecord() const {
    const auto files = mHasRecord ? filesOfCards(mFolder) : std::nullopt;
    for (const std::filesystem::path& file : files.value_or(std::vector<std::filesystem::path>())) {
        Problems problems;
        if (readCardFile(file, problems) || !problems.error()) continue;
        if (file.stem() == mUID || mentionsUID(readFileContent(file, QVVCard::kMaximumSize).bytes, mUID)) return file;
    }
    return {};
}

CardSaver::Attempt CardSaver::update(CardFile& record) {
    qv::updateCard(record.card, mProfile, mUID);
    const std::string bytes = record.card.bytes();
    if (bytes == record.bytes) return finish(QVAddressBookSaveOutcome::Updated);
    if (bytes.size() > QVVCard::kMaximumSize) return unwritable(record.file);
    TemporaryFile file(mFolder, bytes, record.mode);
    if (!file.isWritten()) return unwritable(record.file);
    if (mWillReplace) mWillReplace(record.file);
    const FileContent now = readFileContent(record.file, QVVCard::kMaximumSize);
    if (now.state != FileState::Read || now.bytes != record.bytes) return std::nullopt;
    if (!file.replace(record.file) || !syncFolder(mFolder)) return unwritable(record.file);
    return finish(QVAddressBookSaveOutcome::Updated);
}

CardSaver::Attempt CardSaver::create() {
    if (!qv::profileHasContents(mProfile)) return nothingToSave();
    QVVCard card = QVVCard::emptyCard();
    qv::updateCard(card, mProfile, mUID);
    const std::string bytes = card.bytes();
    // A name that is taken belongs to another card, or to this one, which the next attempt finds.
    const std::string name = mNamesTried++ == 0 && isPlainName(mUID) ? mUID : newUUID();
    const std::filesystem::path path = mFolder / (name + ".vcf");
    TemporaryFile file(mFolder, bytes, 0644);
    if (bytes.size() > QVVCard::kMaximumSize || !file.isWritten()) return unwritable(path);
    const TemporaryFile::Placing placing = file.placeAs(path);
    if (placing == TemporaryFile::Placing::Taken) return std::nullopt;
    if (placing == TemporaryFile::Placing::Failed || !syncFolder(mFolder)) return unwritable(path);
    return finish(QVAddressBookSaveOutcome::Created);
}

QVAddressBookSaveResult CardSaver::finish(QVAddressBookSaveOutcome outcome) const {
    return {.error = std::nullopt, .UID = mUID, .outcome = outcome};
}

void CardSaver::removeLeftovers() const {
    std::error_code error;
    std::vector<std::filesystem::path> leftovers;
    std::filesystem::directory_iterator entry(mFolder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        if (TemporaryFile::isName(entry->path().filename().string())) leftovers.push_back(entry->path());
    }
    for (const std::filesystem::path& file : leftovers)
        std::filesystem::remove(file, error);
}
