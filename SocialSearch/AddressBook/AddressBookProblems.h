#pragma once

#include "QVPlatform/Error.h"
#include "QVSocialSearch/QVAddressBook.h"

#include <cstddef>
#include <optional>
#include <string>

/// An error of the address book's domain with its readable text.
qv::Error addressBookError(QVAddressBookErrorCode code, std::string description);

/// What could not be read in one walk through an address book.
class Problems {
  public:
    /// One card, or a part of the book, was left out.
    void add(const std::string& place, const std::string& what, bool isBroken);
    /// The walk itself failed; the first failure outweighs what was left out.
    void fail(qv::Error error);
    bool hasFailed() const { return mFailure.has_value(); }

    /// One error for all of them; nothing when there were none.
    std::optional<qv::Error> error() const;
    /// Hands it to a caller who may not ask (null).
    void report(std::optional<qv::Error>* error) const;

  private:
    std::size_t mCount = 0;
    std::string mText;
    bool mAllAreBroken = true;
    std::optional<qv::Error> mFailure;
};
