#pragma once

#include <QVCardScan/QVCardScan.h>

#include <QByteArray>
#include <QMap>
#include <QTextBrowser>

/// Shows a contact note. The note refers to its pictures by their hashes; a host keeps them beside it, this one in
/// memory.
class NoteView : public QTextBrowser {
  public:
    using QTextBrowser::QTextBrowser;

    /// `pictures`: the card's photographs by the hashes that the request gave them.
    void showNote(const QVCardProcessingResponse& response, const QMap<QString, QByteArray>& pictures);

    QVariant loadResource(int type, const QUrl& name) override;

  private:
    QMap<QString, QByteArray> mPictures;
};
