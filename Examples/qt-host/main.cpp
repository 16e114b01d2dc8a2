// A host with a Qt event loop and a window.
// usage: QVCARDSCAN_TOKEN=… qt-host SERVER_URL [--grab FILE] [PICTURE…]
//   --grab FILE   read the pictures, put a picture of the window into FILE, and end
#include "CardWindow.h"

#include <QVAdapters/QVQtExecutor.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>
#include <cstdio>

namespace {

/// Once the window has drawn what was read.
void grabAndQuit(CardWindow& window, const QString& file, bool isRead) {
    QTimer::singleShot(0, &window, [&window, file, isRead] {
        const bool isSaved = window.grab().save(file);
        QApplication::exit(isRead && isSaved ? EXIT_SUCCESS : EXIT_FAILURE);
    });
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption grab("grab", "Put a picture of the window into a file, and end.", "file");
    parser.addOption(grab);
    parser.addPositionalArgument("server", "The recognition server's address.");
    parser.addPositionalArgument("pictures", "The card's front, and its back.", "[pictures…]");
    parser.process(application);
    QStringList arguments = parser.positionalArguments();
    if (arguments.isEmpty() || !qEnvironmentVariableIsSet("QVCARDSCAN_TOKEN")) parser.showHelp(EXIT_FAILURE);

    qv::MainQueue::setExecutor(QVQtExecutor::executorForCurrentThread());
    QVBizCardManager::sharedManager()->setServerURL(arguments.takeFirst().toStdString());
    int status = EXIT_FAILURE;
    {
        CardWindow window(qEnvironmentVariable("QVCARDSCAN_TOKEN"));
        if (parser.isSet(grab)) {
            window.setFinished([&](bool isRead) { grabAndQuit(window, parser.value(grab), isRead); });
        }
        window.show();
        if (!arguments.isEmpty()) window.read(arguments);
        status = QApplication::exec();
    }
    // The event loop goes: the library must not hand it work any more.
    qv::MainQueue::setExecutor(nullptr);
    return status;
}
