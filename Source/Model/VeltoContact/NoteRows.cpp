#include "NoteRows.h"

#include "NoteEncoding.h"
#include "QVCardScan/QVCardScanDefines.h"
#include "QVCardScan/QVVeltoContactField.h"
#include "QVPlatform/Bundle.h"
#include "QVPlatform/Format.h"

namespace qvnote {
namespace {

std::string row(std::string_view content) {
    std::string row(QVContactFieldContainerHeader);
    row += QVContactFieldContentHeader;
    row += content;
    row += QVContactFieldContentFooter;
    row += QVContactFieldContainerFooter;
    return row;
}

std::string localizedLabelCell(std::string_view key) {
    return labelCell(qv::Bundle::localizedString(key));
}

std::string handleRows(const HandleList& handles, std::string_view format, std::string_view service) {
    std::string rows;
    for (const std::string& handle : handles) {
        const std::string text = escapedMarkup(handle);
        rows += row(qv::format(format, localizedLabelCell(service), text, text));
    }
    return rows;
}

std::string profileRow(const std::string& URL, std::string_view format, std::string_view service) {
    return row(qv::format(format, localizedLabelCell(service), escapedMarkup(URL),
                          qv::Bundle::localizedString("View Profile")));
}

}  // namespace

std::string emailRows(const FieldList& fields) {
    std::string rows;
    for (const auto& field : fields) {
        if (!field) continue;
        const std::string address = escapedMarkup(field->text().value_or(""));
        rows += row(qv::format(QVContactEmailFormat, labelCell(field->label()), address, address));
    }
    return rows;
}

std::string phoneRows(const FieldList& fields) {
    std::string rows;
    for (const auto& field : fields) {
        if (!field) continue;
        const std::string number = escapedMarkup(field->text().value_or(""));
        rows += row(qv::format(QVContactPhoneFormat, labelCell(field->label()), number));
    }
    return rows;
}

std::string twitterRows(const HandleList& handles) {
    return handleRows(handles, QVContactTwitterFormat, "Twitter");
}

std::string weiboRows(const HandleList& handles) {
    return handleRows(handles, QVContactWeiboFormat, "Weibo");
}

std::string addressRow(const std::string& address) {
    return row(
        qv::format(QVContactAddressFormat, localizedLabelCell("Address"), mapLink(address), escapedMarkup(address)));
}

std::string linkedInRow(const std::string& URL) {
    return profileRow(URL, QVContactLinkedInFormat, "LinkedIn");
}

std::string facebookRow(const std::string& URL) {
    return profileRow(URL, QVContactFacebookFormat, "Facebook");
}

std::string attachments(const QVStringArray& hashes) {
    std::string references;
    if (!hashes) return references;
    for (const std::string& hash : *hashes) {
        // The type is the one that hosts store card images under, whatever the picture was.
        if (!hash.empty()) references += qv::format(QVStyleImageAttachment, hash, QVVeltoImageFileType);
    }
    return references;
}

}  // namespace qvnote
