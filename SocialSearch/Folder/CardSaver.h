#pragma once

#include "Folder/CardFiles.h"
#include "QVSocialSearch/QVAddressBook.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

/// One save into a folder of cards, from the look for the record to the synced folder.
class CardSaver {
  public:
    using WillReplace = std::function<void(const std::filesystem::path& file)>;

    CardSaver(std::filesystem::path folder, const QVSocialProfile& profile, WillReplace willReplace);

    QVAddressBookSaveResult save();

  private:
    /// Nothing when somebody was quicker, and the save starts again.
    using Attempt = std::optional<QVAddressBookSaveResult>;

    Attempt attempt();
    Attempt update(CardFile& record);
    Attempt create();
    std::optional<CardFile> findRecord();
    /// The broken file that may be the record; an empty path when none is.
    std::filesystem::path brokenRecord() const;
    void removeLeftovers() const;
    QVAddressBookSaveResult finish(QVAddressBookSaveOutcome outcome) const;

    std::filesystem::path mFolder;
    const QVSocialProfile& mProfile;
    WillReplace mWillReplace;
    std::string mUID;
    bool mHasRecord = false;
    int mNamesTried = 0;
};
