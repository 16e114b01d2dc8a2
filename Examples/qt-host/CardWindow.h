#pragma once

#include "NoteView.h"

#include <QByteArray>
#include <QLabel>
#include <QMainWindow>
#include <QMap>
#include <QPushButton>
#include <QStringList>
#include <functional>

/// A window with one button: pick the photographs of a card, see its note.
class CardWindow : public QMainWindow {
  public:
    explicit CardWindow(QString token);
    /// Forgets the card that is being read.
    ~CardWindow() override;

    /// Reads a card: its front, and its back if there are two.
    void read(const QStringList& files);
    /// Called when a card was read, or could not be.
    void setFinished(std::function<void(bool isRead)> finished) { mFinished = std::move(finished); }

  private:
    void pickPictures();
    void showCard(const QVCardProcessingResponse& response);
    void finish(bool isRead, const QString& status);

    const QString mToken;
    NoteView* const mNote;
    QLabel* const mStatus;
    QPushButton* const mButton;
    QString mNoteUUID;
    QMap<QString, QByteArray> mPictures;
    std::function<void(bool)> mFinished;
};
