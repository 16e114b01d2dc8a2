#pragma once

#include "CardDAV/DAVMultistatus.h"
#include "CardDAV/XMLNames.h"
#include "QVPlatform/XMLParser.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Collects the resources while a multi-status answer is parsed.
class DAVMultistatusReader : public qv::XMLParserDelegate {
  public:
    /// Whether it was such an answer, and a sane one.
    bool isSound() const { return mIsMultistatus && !mIsHostile; }
    std::vector<DAVResource> takeResources() { return std::move(mResources); }

    void didStartElement(const std::string& elementName, const std::map<std::string, std::string>& attributes) override;
    void didEndElement(const std::string& elementName) override;
    void foundCharacters(std::string_view string) override;
    void parseErrorOccurred(const qv::Error& parseError) override;

  private:
    void endInResponse(std::string_view name);
    void endInProperty(std::string_view name, std::string_view property);
    void endProperty(std::string_view name);
    void endPropstat();
    void endResponse();

    XMLNames mNames;
    bool mIsMultistatus = false;
    bool mIsHostile = false;
    std::string mText;
    /// The properties of one status, until that is known.
    DAVResource mProperties;
    long mPropertiesStatus = 0;
    DAVResource mResource;
    std::vector<DAVResource> mResources;
};
