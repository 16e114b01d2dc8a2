#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace testsupport {

/// What a new program is given, as the system wants it: an array of texts with a null pointer at its end.
class ProcessTexts {
  public:
    /// The program itself and what follows it.
    static ProcessTexts arguments(const std::filesystem::path& program, const std::vector<std::string>& arguments);
    /// The test's own environment with these changes; an absent value removes the variable.
    static ProcessTexts environment(const std::map<std::string, std::optional<std::string>>& changes);

    /// Holds as long as this object.
    char* const* data() const { return mPointers.data(); }

    ProcessTexts(ProcessTexts&&) = default;
    ProcessTexts& operator=(ProcessTexts&&) = default;
    ProcessTexts(const ProcessTexts&) = delete;
    ProcessTexts& operator=(const ProcessTexts&) = delete;

  private:
    explicit ProcessTexts(std::vector<std::string> texts);

    std::vector<std::string> mTexts;
    std::vector<char*> mPointers;
};

}  // namespace testsupport
