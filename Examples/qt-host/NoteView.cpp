#include "NoteView.h"

#include <QImage>
#include <QRegularExpression>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

namespace {

/// The view shows pictures no wider than this, in pixels.
constexpr int kAvatarWidth = 80;
constexpr int kCardWidth = 400;
constexpr int kMargin = 16;

QByteArray bytesOf(const qv::Data& data) {
    return {reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size())};
}

/// The note's own element for a picture, in words that a text view knows.
QString withImages(QString note) {
    static const QRegularExpression media("<qv-media([^>]*) hash=\"([^\"]*)\"[^>]*/>");
    return note.replace(media, "<img src=\"note:\\2\"/>");
}

/// The note's rows are made for web views, which have floating boxes; here every line begins at the same place.
void alignBlocks(QTextDocument& document) {
    QTextBlockFormat format;
    format.setIndent(0);
    format.setLeftMargin(kMargin);
    QTextCursor cursor(&document);
    cursor.select(QTextCursor::Document);
    cursor.mergeBlockFormat(format);
}

}  // namespace

void NoteView::showNote(const QVCardProcessingResponse& response, const QMap<QString, QByteArray>& pictures) {
    mPictures = pictures;
    const auto keep = [this](const std::shared_ptr<qv::Image>& image, const char* type) {
        const auto hash = QVVeltoNoteGenerator::lowerHexStringForDataHashFromNSImage(image, type);
        mPictures.insert(QString::fromStdString(hash), bytesOf(QVVeltoNoteGenerator::dataForNSImage(image, type)));
    };
    keep(QVVeltoNoteGenerator::placeholderAvatar(), "image/png");
    if (const auto avatars = response.avatars()) keep(avatars->front(), "image/jpeg");
    setHtml(withImages(QString::fromStdString(response.qvmlContent().value_or(""))));
    alignBlocks(*document());
}

QVariant NoteView::loadResource(int type, const QUrl& name) {
    if (name.scheme() != "note") return QTextBrowser::loadResource(type, name);
    const QImage image = QImage::fromData(mPictures.value(name.path()));
    const int width = image.width() > kCardWidth ? kCardWidth : image.width();
    return image.scaledToWidth(image.width() == image.height() ? kAvatarWidth : width, Qt::SmoothTransformation);
}
