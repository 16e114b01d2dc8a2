#include "CardWindow.h"

#include <QVPlatform/MainQueue.h>

#include <QCryptographicHash>
#include <QFile>
#include <QFileDialog>
#include <QPointer>
#include <QStatusBar>
#include <QToolBar>
#include <QUuid>

CardWindow::CardWindow(QString token)
    : mToken(std::move(token)), mNote(new NoteView(this)), mStatus(new QLabel(this)), mButton(new QPushButton(this)) {
    setWindowTitle("Business cards");
    resize(860, 640);
    setCentralWidget(mNote);
    mNote->setAccessibleName("Contact note");
    mNote->setOpenExternalLinks(true);
    mButton->setText("&Open pictures of a card…");
    auto* const bar = addToolBar("Card");
    bar->setMovable(false);
    bar->addWidget(mButton);
    statusBar()->addWidget(mStatus);
    mStatus->setText("Pick one picture of a card, or its front and its back.");
    connect(mButton, &QPushButton::clicked, this, [this] { pickPictures(); });
}

CardWindow::~CardWindow() {
    QVBizCardManager::sharedManager()->cancelRequestWithIDString(mNoteUUID.toStdString());
}

void CardWindow::pickPictures() {
    const QStringList files = QFileDialog::getOpenFileNames(this, "Pictures of a card", QString(),
                                                            "Pictures (*.jpg *.jpeg *.png *.tif *.tiff *.webp)");
    if (!files.isEmpty()) read(files);
}

void CardWindow::read(const QStringList& files) {
    auto images = std::make_shared<std::vector<std::shared_ptr<qv::Image>>>();
    auto hashes = std::make_shared<std::vector<std::string>>();
    mPictures.clear();
    for (const QString& name : files) {
        QFile file(name);
        const QByteArray bytes = file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
        images->push_back(qv::Image::initWithData(qv::Data(bytes.begin(), bytes.end())));
        if (!images->back()->isValid()) return finish(false, QString("“%1” is no picture that can be read.").arg(name));
        const QString hash = QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex();
        hashes->push_back(hash.toStdString());
        mPictures.insert(hash, bytes);
    }
    mNoteUUID = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const auto request = QVCardProcessingRequest::initWithNoteUUID(mNoteUUID.toStdString(), images, hashes,
                                                                   mToken.toStdString(), /*processImageForOCR=*/false);
    mButton->setEnabled(false);
    mStatus->setText("Reading the card…");
    // The completion comes on a thread of the library, and goes on in the event loop if the window is still there.
    QVBizCardManager::sharedManager()->addRequest(request, [window = QPointer<CardWindow>(this)](auto response) {
        qv::MainQueue::executor()->dispatchAsync([window, response] {
            if (window) window->showCard(*response);
        });
    });
}

void CardWindow::showCard(const QVCardProcessingResponse& response) {
    const auto errors = response.errors();
    if (errors && !errors->empty()) {
        return finish(false, QString("The card could not be read (error %1). Is the recognition server running, and "
                                     "is the token right?")
                                 .arg(errors->front().code));
    }
    mNote->showNote(response, mPictures);
    finish(true, QString("Read: %1").arg(QString::fromStdString(response.contactName().value_or("nobody’s name"))));
}

void CardWindow::finish(bool isRead, const QString& status) {
    mButton->setEnabled(true);
    mStatus->setText(status);
    if (mFinished) mFinished(isRead);
}
