#include "NoteRows.h"

#include "NoteEncoding.h"
#include "QVCardScan/QVCardScanDefines.h"
#include "QVCardScan/QVVeltoContactField.h"
#include "QVPlatform/Bundle.h"
#include "QVPlatform/Format.h"

#include <algorithm>
#include <initializer_list>
#include <utility>
#include <vector>

namespace qvnote {
namespace {

std::string row(std::string_view format, std::initializer_list<std::string_view> texts) {
    std::string row(QVContactFieldContainerHeader);
    row += QVContactFieldContentHeader;
    row += qv::fillFormat(format, texts);
    row += QVContactFieldContentFooter;
    row += QVContactFieldContainerFooter;
    return row;
}

/// Writes rows of one kind one after the other: a label cell, and the row's text wherever else its format has a place.
class RowWriter {
  public:
    RowWriter(std::string_view format, std::size_t count) : mCount(count) {
        constexpr std::string_view kPlace = "%@";
        for (std::size_t start = 0; start <= format.size();) {
            const std::size_t end = std::min(format.find(kPlace, start), format.size());
            mPieces.push_back(format.substr(start, end - start));
            start = end + kPlace.size();
        }
    }

    void add(std::string_view cell, std::string_view text) {
        mRows += QVContactFieldContainerHeader;
        mRows += QVContactFieldContentHeader;
        mRows += mPieces.front();
        mRows += cell;
        for (std::size_t index = 1; index < mPieces.size(); ++index) {
            if (index > 1) mRows += text;
            mRows += mPieces[index];
        }
        mRows += QVContactFieldContentFooter;
        mRows += QVContactFieldContainerFooter;
        reserveOthers();
    }

    /// With the cell of a label; neighbours mostly have the same.
    void addWithLabel(const QVString& label, std::string_view text) {
        if (mCell.empty() || label != mLabel) {
            mCell = labelCell(label);
            mLabel = label;
        }
        add(mCell, text);
    }

    std::string takeRows() { return std::move(mRows); }

  private:
    // Rows mostly are as long as the first; one of megabytes says nothing of the others.
    void reserveOthers() {
        constexpr std::size_t kOrdinary = 1024;
        if (mCount > 1) mRows.reserve(std::min(mRows.size(), kOrdinary) * std::exchange(mCount, 0) * 9 / 8);
    }

    std::size_t mCount;
    std::vector<std::string_view> mPieces;
    QVString mLabel;
    std::string mCell;
    std::string mRows;
};

std::string localizedLabelCell(std::string_view key) {
    return labelCell(qv::Bundle::localizedString(key));
}

std::string_view textOf(const QVVeltoContactField& field) {
    return field.text() ? std::string_view(*field.text()) : std::string_view();
}

std::string fieldRows(const FieldList& fields, std::string_view format) {
    RowWriter rows(format, fields.size());
    for (const auto& field : fields) {
        if (field) rows.addWithLabel(field->label(), escapedMarkup(textOf(*field)));
    }
    return rows.takeRows();
}

std::string handleRows(const HandleList& handles, std::string_view format, std::string_view service) {
    RowWriter rows(format, handles.size());
    for (const std::string& handle : handles)
        rows.add(localizedLabelCell(service), escapedMarkup(handle));
    return rows.takeRows();
}

std::string profileRow(const std::string& URL, std::string_view format, std::string_view service) {
    return row(format, {localizedLabelCell(service), escapedMarkup(URL), qv::Bundle::localizedString("View Profile")});
}

}  // namespace

std::string emailRows(const FieldList& fields) {
    return fieldRows(fields, QVContactEmailFormat);
}

std::string phoneRows(const FieldList& fields) {
    return fieldRows(fields, QVContactPhoneFormat);
}

std::string twitterRows(const HandleList& handles) {
    return handleRows(handles, QVContactTwitterFormat, "Twitter");
}

std::string weiboRows(const HandleList& handles) {
    return handleRows(handles, QVContactWeiboFormat, "Weibo");
}

std::string addressRow(const std::string& address) {
    return row(QVContactAddressFormat, {localizedLabelCell("Address"), mapLink(address), escapedMarkup(address)});
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
