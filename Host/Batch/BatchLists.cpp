#include "Batch/BatchLists.h"

#include "Batch/CardRecord.h"
#include "Batch/ContactCSV.h"
#include "Support/FileReading.h"
#include "Support/FileWriting.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace qvhost {
namespace {

constexpr std::chrono::seconds kShortestPause{5};
/// Of the time, one part in so many goes into lists.
constexpr int kShare = 25;
constexpr std::size_t kLargestCard = std::size_t{32} * 1024 * 1024;

std::string contactIn(const std::filesystem::path& folder) {
    const auto bytes = readFile(folder / "contact.vcf", kLargestCard);
    return bytes ? std::string(bytes->begin(), bytes->end()) : "";
}

}  // namespace

std::optional<Failure> BatchLists::writeSometimes(const std::vector<IndexPage::Failed>& failed) {
    const auto pause = std::max<Clock::duration>(kShortestPause, mCost * kShare);
    return Clock::now() - mWritten < pause ? std::nullopt : write(failed);
}

std::optional<Failure> BatchLists::write(const std::vector<IndexPage::Failed>& failed) {
    const auto start = Clock::now();
    const std::vector<std::string> names = mFolder.cards();
    FileReplacement table(mFolder.path() / "contacts.csv");
    FileReplacement contacts(mFolder.path() / "contacts.vcf");
    FileReplacement page(mFolder.path() / "index.html");
    table.write(ContactCSV::header());
    page.write(IndexPage::head(names.size(), failed));
    for (const std::string& name : names) {
        const std::filesystem::path folder = mFolder.folderOf(name);
        const auto card = CardRecord::read(folder);
        if (!card) continue;
        table.write(ContactCSV::row(*card));
        contacts.write(contactIn(folder));
        page.write(IndexPage::card(*card, folder));
    }
    page.write(IndexPage::tail());
    for (FileReplacement* list : {&table, &contacts, &page}) {
        if (auto failure = list->finish()) return failure;
    }
    mWritten = Clock::now();
    mCost = mWritten - start;
    return std::nullopt;
}

}  // namespace qvhost
