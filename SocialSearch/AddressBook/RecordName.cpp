#include "AddressBook/RecordName.h"

#include <algorithm>
#include <random>

std::string newUUID() {
    std::random_device source;
    std::string uuid;
    for (int i = 0; i < 32; ++i) {
        unsigned digit = source() & 15U;
        if (i == 12) digit = 4;
        if (i == 16) digit = (digit & 3U) | 8U;
        if (i == 8 || i == 12 || i == 16 || i == 20) uuid += '-';
        uuid += "0123456789abcdef"[digit];
    }
    return uuid;
}

bool isPlainName(const std::string& text) {
    const auto allowed = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' || c == '_' ||
               c == '.' || c == '@';
    };
    return !text.empty() && text.size() <= 200 && text.front() != '.' && std::all_of(text.begin(), text.end(), allowed);
}

bool mentionsUID(const std::string& bytes, const std::string& UID) {
    return bytes.find("UID:" + UID) != std::string::npos;
}
