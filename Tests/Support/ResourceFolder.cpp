#include "Support/ResourceFolder.h"

#include "QVPlatform/Bundle.h"

#include <stdlib.h>

#include <fstream>
#include <stdexcept>
#include <string>

namespace testsupport {

ResourceFolder::ResourceFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "qv-resources-XXXXXX").string();
    if (!::mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
    mPath = name;
    qv::Bundle::setResourceFolder(mPath);
}

ResourceFolder::~ResourceFolder() {
    qv::Bundle::setResourceFolder({});
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

void ResourceFolder::write(std::string_view name, std::string_view contents) const {
    std::ofstream(mPath / name, std::ios::binary) << contents;
}

void ResourceFolder::copyFromResources(std::string_view name) const {
    std::filesystem::copy_file(std::filesystem::path(QV_SOURCE_DIR) / "Resources" / name, mPath / name,
                               std::filesystem::copy_options::overwrite_existing);
}

}  // namespace testsupport
