#include "CardDAV/DAVMultistatus.h"

#include "CardDAV/DAVMultistatusReader.h"

std::optional<std::vector<DAVResource>> resourcesOfMultistatus(std::string_view text) {
    DAVMultistatusReader reader;
    if (!qv::XMLParser::parse(text, reader) || !reader.isSound()) return std::nullopt;
    return reader.takeResources();
}
