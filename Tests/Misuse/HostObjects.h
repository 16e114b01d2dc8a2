#pragma once

#include "Places.h"
#include "QVCardScan/QVContactNoteDataSource.h"
#include "QVCardScan/QVVeltoContact.h"
#include "QVPlatform/MainQueue.h"
#include "QVSocialSearch/QVAddressBook.h"
#include "QVSocialSearch/QVSocialSearchProvider.h"

#include <memory>
#include <string>
#include <utility>

/// The objects that a host may hand to the library; each visits the desk before it does its work.
namespace misuse {

class DataSource : public QVContactNoteDataSource {
  public:
    explicit DataSource(DeskPtr desk) : mDesk(std::move(desk)), mPresence(Desk::presence(mDesk)) {}
    bool implementsContactMatchingFullName() const override {
        mDesk->visit(Place::AskWhetherThereIsADataSource);
        return true;
    }
    std::shared_ptr<QVVeltoContact> contactMatchingFullName(const QVString&, const QVString&, const QVString&,
                                                            const QVString&, const QVString&) override {
        mDesk->visit(Place::DataSource);
        auto contact = std::make_shared<QVVeltoContact>();
        contact->setCompany("Example Works");
        return contact;
    }

  private:
    const DeskPtr mDesk;
    const std::shared_ptr<void> mPresence;
};

class Provider : public QVSocialSearchProvider {
  public:
    explicit Provider(DeskPtr desk) : mDesk(std::move(desk)), mPresence(Desk::presence(mDesk)) {}
    std::string name() const override {
        mDesk->visit(Place::ProviderName);
        return "host's provider";
    }
    std::shared_ptr<QVSocialProfile> profileForRequest(const QVSocialSearchRequest&, Clock::time_point) override {
        mDesk->visit(Place::Provider);
        // Only who fails is asked for a name.
        if (mDesk->isExpecting(Place::ProviderName)) throw std::runtime_error("no profile");
        auto profile = std::make_shared<QVSocialProfile>();
        profile->setAvatarURLLinkedIn("http://pictures.example/ada");
        return profile;
    }

  private:
    const DeskPtr mDesk;
    const std::shared_ptr<void> mPresence;
};

class AddressBook : public QVAddressBook {
  public:
    explicit AddressBook(DeskPtr desk) : mDesk(std::move(desk)), mPresence(Desk::presence(mDesk)) {}
    QVAddressBookSaveResult saveProfile(const QVSocialProfile&) override {
        mDesk->visit(Place::AddressBookSave);
        return {.error = {}, .UID = "1", .outcome = QVAddressBookSaveOutcome::Created};
    }
    Profiles profiles(std::optional<qv::Error>*) override { return {}; }
    Profiles profilesWithEmailAddress(const std::string&, std::optional<qv::Error>*) override {
        mDesk->visit(Place::AddressBookLookUp);
        return {};
    }
    std::shared_ptr<QVSocialProfile> profileWithUID(const std::string&, std::optional<qv::Error>*) override {
        return nullptr;
    }

  private:
    const DeskPtr mDesk;
    const std::shared_ptr<void> mPresence;
};

/// A loop that the test turns, on a clock that it drives.
class Executor : public qv::MainExecutor {
  public:
    explicit Executor(DeskPtr desk) : mDesk(std::move(desk)), mPresence(Desk::presence(mDesk)) {}
    void dispatchAsync(std::function<void()> work) override {
        mDesk->visit(Place::DispatchAsync);
        pumped.dispatchAsync(std::move(work));
    }
    void dispatchAfter(std::chrono::nanoseconds delay, std::function<void()> work) override {
        mDesk->visit(Place::DispatchAfter);
        pumped.dispatchAfter(delay, std::move(work));
    }
    bool isMainThread() const override {
        mDesk->visit(Place::IsMainThread);
        return pumped.isMainThread();
    }

    qv::ManualClock clock;
    qv::PumpedExecutor pumped{clock.clock()};

  private:
    const DeskPtr mDesk;
    const std::shared_ptr<void> mPresence;
};

}  // namespace misuse
