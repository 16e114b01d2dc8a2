#include "Support/ProcessTexts.h"

#include <string_view>
#include <utility>

extern char** environ;

namespace testsupport {

ProcessTexts::ProcessTexts(std::vector<std::string> texts) : mTexts(std::move(texts)) {
    mPointers.reserve(mTexts.size() + 1);
    for (std::string& text : mTexts)
        mPointers.push_back(text.data());
    mPointers.push_back(nullptr);
}

ProcessTexts ProcessTexts::arguments(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
    std::vector<std::string> texts{program.string()};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    return ProcessTexts(std::move(texts));
}

ProcessTexts ProcessTexts::environment(const std::map<std::string, std::optional<std::string>>& changes) {
    std::vector<std::string> texts;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        if (!changes.contains(std::string(text.substr(0, text.find('='))))) texts.emplace_back(text);
    }
    for (const auto& [name, value] : changes) {
        if (value) texts.push_back(name + '=' + *value);
    }
    return ProcessTexts(std::move(texts));
}

}  // namespace testsupport
