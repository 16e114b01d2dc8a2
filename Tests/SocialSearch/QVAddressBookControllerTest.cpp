#include "FakeAddressBook.h"
#include "QVSocialSearch/QVAddressBookController.h"
#include "SocialFixtures.h"
#include "Support/DrivenMainQueue.h"
#include "Support/Gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <any>
#include <stdexcept>
#include <thread>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::Gate;

class QVAddressBookControllerTest : public testing::Test {
  protected:
    QVAddressBookControllerTest() {
        mController.setAddressBook(mAddressBook);
        mAddressBook->save = [](const QVSocialProfile& profile) {
            QVAddressBookSaveResult result;
            result.UID = "uid of " + profile.formattedName().value_or("(null)");
            result.outcome = QVAddressBookSaveOutcome::Created;
            return result;
        };
    }

    void save(const std::shared_ptr<QVSocialProfile>& profile) {
        mController.saveSocialProfileInAddressBook(profile, [this](const QVAddressBookSaveResult& result) {
            EXPECT_EQ(std::this_thread::get_id(), mMainThread);
            mResults.push_back(result);
        });
    }
    bool waitForResults(std::size_t count) {
        return mMain.pumpUntil([&] { return mResults.size() >= count; });
    }
    void expectFailure(QVAddressBookErrorCode code, const std::string& description) const {
        ASSERT_EQ(mResults.size(), 1U);
        const auto& result = mResults.front();
        ASSERT_TRUE(result.error);
        EXPECT_EQ(result.error->domain, "QVAddressBookErrorDomain");
        EXPECT_EQ(result.error->code, code);
        EXPECT_EQ(std::any_cast<std::string>(result.error->userInfo.at(std::string(qv::kErrorDescriptionKey))),
                  description);
        EXPECT_EQ(result.UID, std::nullopt);
        EXPECT_EQ(result.outcome, QVAddressBookSaveOutcome::None);
    }

    const std::thread::id mMainThread = std::this_thread::get_id();
    testsupport::DrivenMainQueue mMain;
    std::shared_ptr<social::FakeAddressBook> mAddressBook = std::make_shared<social::FakeAddressBook>();
    QVAddressBookController mController;
    std::vector<QVAddressBookSaveResult> mResults;
};

TEST_F(QVAddressBookControllerTest, ReportsOnTheMainExecutorAndNeverInsideTheCall) {
    save(social::profile("A"));
    EXPECT_THAT(mResults, IsEmpty());
    ASSERT_TRUE(waitForResults(1));
    EXPECT_FALSE(mResults.front().error);
    EXPECT_EQ(mResults.front().UID, "uid of A");
    EXPECT_EQ(mResults.front().outcome, QVAddressBookSaveOutcome::Created);
}

TEST_F(QVAddressBookControllerTest, SavesInTheOrderOfTheCallsOneAtATime) {
    const auto gate = std::make_shared<Gate>();
    const auto saved = std::make_shared<std::vector<std::string>>();
    mAddressBook->save = [=](const QVSocialProfile& profile) {
        gate->wait();
        saved->push_back(*profile.formattedName());
        return QVAddressBookSaveResult();
    };
    for (const char* name : {"A", "B", "C", "D", "E"})
        save(social::profile(name));
    gate->open();
    ASSERT_TRUE(waitForResults(5));
    EXPECT_THAT(*saved, ElementsAre("A", "B", "C", "D", "E"));
}

TEST_F(QVAddressBookControllerTest, SavesTheProfileAsItWasWhenAsked) {
    const auto gate = std::make_shared<Gate>();
    const auto name = std::make_shared<QVString>();
    mAddressBook->save = [=](const QVSocialProfile& profile) {
        gate->wait();
        *name = profile.formattedName();
        return QVAddressBookSaveResult();
    };
    const auto profile = social::profile("Then");
    save(profile);
    profile->setFormattedName("Now");
    gate->open();
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(*name, "Then");
}

TEST_F(QVAddressBookControllerTest, KeepsTheAddressBookOfTheCall) {
    const auto gate = std::make_shared<Gate>();
    mAddressBook->save = [=](const QVSocialProfile&) {
        gate->wait();
        return QVAddressBookSaveResult();
    };
    save(social::profile("A"));
    mController.setAddressBook(nullptr);
    mAddressBook.reset();
    gate->open();
    ASSERT_TRUE(waitForResults(1));
    EXPECT_FALSE(mResults.front().error);
}

TEST_F(QVAddressBookControllerTest, SaysThatNoAddressBookIsChosen) {
    mController.setAddressBook(nullptr);
    save(social::profile("A"));
    EXPECT_THAT(mResults, IsEmpty());
    ASSERT_TRUE(waitForResults(1));
    expectFailure(QVAddressBookErrorNoAddressBook, "No address book is chosen");
}

TEST_F(QVAddressBookControllerTest, SaysThatThereIsNoProfile) {
    save(nullptr);
    ASSERT_TRUE(waitForResults(1));
    expectFailure(QVAddressBookErrorNoProfile, "There is no profile to save");
}

TEST_F(QVAddressBookControllerTest, SaysWhatABackEndThrows) {
    mAddressBook->save = [](const QVSocialProfile&) -> QVAddressBookSaveResult { throw std::runtime_error("no disk"); };
    save(social::profile("A"));
    ASSERT_TRUE(waitForResults(1));
    expectFailure(QVAddressBookErrorBackEndFailed, "no disk");
    mResults.clear();
    mAddressBook->save = [](const QVSocialProfile&) -> QVAddressBookSaveResult { throw 7; };
    save(social::profile("A"));
    ASSERT_TRUE(waitForResults(1));
    expectFailure(QVAddressBookErrorBackEndFailed, "The address book failed");
}

TEST_F(QVAddressBookControllerTest, HandsErrorsOfTheBackEndOnAsTheyAre) {
    mAddressBook->save = [](const QVSocialProfile&) {
        QVAddressBookSaveResult result;
        result.error = qv::Error{"Other", 42, {}};
        return result;
    };
    save(social::profile("A"));
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(mResults.front().error->domain, "Other");
    EXPECT_EQ(mResults.front().error->code, 42);
}

TEST_F(QVAddressBookControllerTest, NeedsNoHandler) {
    const auto saved = std::make_shared<Gate>();
    mAddressBook->save = [=](const QVSocialProfile&) {
        saved->open();
        return QVAddressBookSaveResult();
    };
    mController.saveSocialProfileInAddressBook(social::profile("A"), {});
    EXPECT_TRUE(saved->waitFor());
    EXPECT_EQ(mMain.pump(), 0U);
}

TEST_F(QVAddressBookControllerTest, ReportsASaveThatTheControllerDoesNotOutlive) {
    auto controller = std::make_unique<QVAddressBookController>();
    const auto gate = std::make_shared<Gate>();
    mAddressBook->save = [=](const QVSocialProfile&) {
        gate->wait();
        return QVAddressBookSaveResult();
    };
    controller->setAddressBook(mAddressBook);
    controller->saveSocialProfileInAddressBook(social::profile("A"),
                                               [this](const auto& result) { mResults.push_back(result); });
    controller.reset();
    gate->open();
    EXPECT_TRUE(waitForResults(1));
}

TEST(SharedAddressBookController, IsOneWithoutAnAddressBook) {
    EXPECT_EQ(QVAddressBookController::sharedController(), QVAddressBookController::sharedController());
    EXPECT_EQ(QVAddressBookController::sharedController()->addressBook(), nullptr);
}

}  // namespace
