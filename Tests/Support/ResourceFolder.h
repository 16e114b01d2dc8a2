#pragma once

#include <filesystem>
#include <string_view>

namespace testsupport {

/// An empty folder that the libraries take their resources from while this lives; removed afterwards.
class ResourceFolder {
  public:
    ResourceFolder();
    ~ResourceFolder();
    ResourceFolder(const ResourceFolder&) = delete;
    ResourceFolder& operator=(const ResourceFolder&) = delete;

    const std::filesystem::path& path() const { return mPath; }
    void write(std::string_view name, std::string_view contents) const;
    void copyFromResources(std::string_view name) const;

  private:
    std::filesystem::path mPath;
};

}  // namespace testsupport
