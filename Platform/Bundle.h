#pragma once

#include "Export.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace qv {

/// A library's or program's folder of resources.
class QV_EXPORT Bundle {
  public:
    /// `bundleForLibraryHoldingAddress` The bundle of the library or program that holds `address` in memory: the folder
    /// `share/QVCardScan` of its installation prefix, or the source tree's resources for a library that was only built.
    /// `QVCARDSCAN_`-style environment variables are not consulted: a host's resources are where they were installed.
    static Bundle bundleForAddress(const void* address);

    /// A bundle over a folder; for tests and for hosts that carry their resources elsewhere.
    explicit Bundle(std::filesystem::path folder) : mFolder(std::move(folder)) {}

    /// Where a resource is expected, whether or not it is there.
    std::filesystem::path pathForResource(std::string_view name, std::string_view ofType) const;

    /// The first file called `name` with an image extension: png, jpg, jpeg, tif, tiff, webp, heic, in this order;
    /// nothing when there is none.
    std::optional<std::filesystem::path> pathForImageResource(std::string_view name) const;

    /// Replaces the folder that `bundleForAddress` answers with; an empty path brings the look-up back. For hosts that
    /// move the resources, and for tests.
    static void setResourceFolder(std::filesystem::path folder);

    /// `localizedStringForKey:value:table:` of the host's main bundle: the host's word for an English key, and the key
    /// itself when the host has none. Default look-up: gettext in the host's own text domain where its code set is
    /// UTF-8. Any thread may call.
    static std::string localizedString(std::string_view key);

    /// Translates an English key; nothing when the host has no word of its own. Called on any thread.
    using Localizer = std::function<std::optional<std::string>(std::string_view key)>;
    /// The host's own look-up; an empty function brings gettext back. Nothing from it, or an exception, means that the
    /// host has no word of its own.
    static void setLocalizer(Localizer localizer);

  private:
    std::filesystem::path mFolder;
};

}  // namespace qv
