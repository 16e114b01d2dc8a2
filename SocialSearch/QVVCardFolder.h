#pragma once

#include "QVSocialSearch/QVAddressBook.h"

#include <filesystem>
#include <functional>

/// An address book in a folder: one vCard per file (`*.vcf`), as many contact programs and synchronisers share it.
///
/// Files are never written in place: a new file is written beside the card, synced, and put under the card's name at
/// once, so that whoever reads sees the old card or the new one. A card that another program changes meanwhile is
/// read and merged again before it is replaced. Savers of this class take turns through a lock on the folder, in
/// whichever process they are, and the lock goes with its process. Files that begin with a dot and those of other
/// names are not looked at; cards that are broken, or larger than 16 MiB, are left alone and reported.
///
/// A card without UID goes by its file's name, without ".vcf", and gets that as UID when it is saved. Of several cards
/// with one UID the first in the order of file names counts.
///
/// All operations block and may be called from any thread.
class QV_EXPORT QVVCardFolder : public QVAddressBook {
  public:
    /// The folder is made by the first save when it is not there; the one above it must be there.
    explicit QVVCardFolder(std::filesystem::path folder) : mFolder(std::move(folder)) {}

    /// Where the cards are.
    const std::filesystem::path& folder() const { return mFolder; }

    /// Called on the saving thread when a card's new content is written beside it, before the card is looked at once
    /// more and replaced; null: nobody. Set it before the first save. It lets tests be the other program.
    void setWillReplace(std::function<void(const std::filesystem::path& file)> willReplace) {
        mWillReplace = std::move(willReplace);
    }

    /// The file with that UID; an empty path when there is none.
    std::filesystem::path fileWithUID(const std::string& UID) const;

    QVAddressBookSaveResult saveProfile(const QVSocialProfile& profile) override;
    Profiles profiles(std::optional<qv::Error>* error) override;
    Profiles profilesWithEmailAddress(const std::string& address, std::optional<qv::Error>* error) override;
    std::shared_ptr<QVSocialProfile> profileWithUID(const std::string& UID, std::optional<qv::Error>* error) override;

  private:
    std::filesystem::path mFolder;
    std::function<void(const std::filesystem::path& file)> mWillReplace;
};
