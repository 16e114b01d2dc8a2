#pragma once

#include <array>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace misuse {

/// Where the library calls its host.
enum class Place {
    Completion,
    AskWhetherThereIsADataSource,
    DataSource,
    LogSink,
    AssertionHandler,
    Localizer,
    LinkFetcher,
    Provider,
    ProviderName,
    AddressBookLookUp,
    AddressBookSave,
    SaveHandler,
    Observer,
    DispatchAsync,
    DispatchAfter,
    IsMainThread
};

inline constexpr std::array<std::pair<Place, const char*>, 16> kPlaces = {{
    {Place::Completion, "Completion"},
    {Place::AskWhetherThereIsADataSource, "AskWhetherThereIsADataSource"},
    {Place::DataSource, "DataSource"},
    {Place::LogSink, "LogSink"},
    {Place::AssertionHandler, "AssertionHandler"},
    {Place::Localizer, "Localizer"},
    {Place::LinkFetcher, "LinkFetcher"},
    {Place::Provider, "Provider"},
    {Place::ProviderName, "ProviderName"},
    {Place::AddressBookLookUp, "AddressBookLookUp"},
    {Place::AddressBookSave, "AddressBookSave"},
    {Place::SaveHandler, "SaveHandler"},
    {Place::Observer, "Observer"},
    {Place::DispatchAsync, "DispatchAsync"},
    {Place::DispatchAfter, "DispatchAfter"},
    {Place::IsMainThread, "IsMainThread"},
}};

/// What every callback of a host passes: it behaves until it is told to misbehave at one place. Also counts the host's
/// objects that the library has yet to let go. Any thread.
class Desk {
  public:
    using Misdeed = std::function<void()>;

    /// From now on, so many times.
    void misbehaveAt(Place place, Misdeed misdeed, int times) {
        const std::lock_guard lock(mMutex);
        mPlace = place;
        mMisdeed = std::move(misdeed);
        mTimes = times;
    }
    void behave() { misbehaveAt(Place::Completion, {}, 0); }

    void visit(Place place) {
        Misdeed misdeed;
        {
            const std::lock_guard lock(mMutex);
            if (place != mPlace || mTimes == 0) return;
            --mTimes;
            ++mMisdeeds;
            misdeed = mMisdeed;
        }
        misdeed();
    }
    /// Whether a misdeed is to come there.
    bool isExpecting(Place place) const {
        const std::lock_guard lock(mMutex);
        return place == mPlace && mTimes > 0;
    }
    int misdeeds() const {
        const std::lock_guard lock(mMutex);
        return mMisdeeds;
    }

    void log(std::string_view message) {
        const std::lock_guard lock(mMutex);
        mMessages.emplace_back(message);
    }
    bool wasTold(std::string_view text) const {
        const std::lock_guard lock(mMutex);
        for (const std::string& message : mMessages) {
            if (message.find(text) != std::string::npos) return true;
        }
        return false;
    }

    /// Held by each of the host's objects.
    static std::shared_ptr<void> presence(const std::shared_ptr<Desk>& desk) {
        desk->change(1);
        return std::shared_ptr<void>(nullptr, [desk](void*) { desk->change(-1); });
    }
    /// Says whether the library has let go of everything (a broken test ends after a minute).
    bool waitUntilNobodyIsPresent() {
        std::unique_lock lock(mMutex);
        return mChanged.wait_for(lock, std::chrono::minutes(1), [&] { return mPresent == 0; });
    }

  private:
    void change(int by) {
        const std::lock_guard lock(mMutex);
        mPresent += by;
        mChanged.notify_all();
    }

    mutable std::mutex mMutex;
    std::condition_variable mChanged;
    Place mPlace = Place::Completion;
    Misdeed mMisdeed;
    int mTimes = 0;
    int mMisdeeds = 0;
    int mPresent = 0;
    std::vector<std::string> mMessages;
};
using DeskPtr = std::shared_ptr<Desk>;

}  // namespace misuse
