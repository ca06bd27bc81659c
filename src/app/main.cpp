// veltro: the desktop program. With a map file argument it opens the file
// selection on that game, as a file manager's "Open with" does.

#include "MainWindow.h"
#include "Version.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Veltro Marches"));
    QApplication::setDesktopFileName(QStringLiteral("veltro"));
    QApplication::setApplicationVersion(QStringLiteral(VELTRO_VERSION));

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("MAPFILE"), QStringLiteral("A Stars! universe map file to open."),
                                 QStringLiteral("[MAPFILE]"));
    parser.process(app);

    MainWindow window;
    window.show();
    const QStringList files = parser.positionalArguments();
    if (!files.isEmpty())
        QTimer::singleShot(0, &window, [&window, file = files.first()] { window.openMapFile(file); });
    return app.exec();
}
