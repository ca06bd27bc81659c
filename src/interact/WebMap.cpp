#include "WebMap.h"

#include "QuotedText.h"
#include "WebMapData.h"
#include "WebMapFolder.h"
#include "WebMapPictures.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentMap>
#include <array>
#include <atomic>
#include <exception>
#include <numeric>

namespace {

const std::array views{
    WebMapView{"borders", {BordersButton, UniverseButton, OwnedButton}},
    WebMapView{"territory", {TerritoryButton, OwnedButton}},
    WebMapView{"scanned", {ScannedButton, OwnedButton}},
    WebMapView{"hab", {HabButton, UniverseButton}},
    WebMapView{"growth", {GrowthButton, UniverseButton}},
    WebMapView{"attack", {AttackButton, UniverseButton}},
};

// The page itself, carried in the program.
const std::array pageFiles{"index.html", "map.js", "map.css"};

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        throw WebMapError(QStringLiteral("%1: cannot write the file (%2)")
                              .arg(escapeControls(QDir::toNativeSeparators(path)), file.errorString()));
}

void makeFolder(const QString &path)
{
    if (!QDir().mkpath(path))
        throw WebMapError(QStringLiteral("%1: cannot make the folder").arg(escapeControls(QDir::toNativeSeparators(path))));
}

// One file of one year: a view at one of the two sizes, the names at one
// of them, or the year's data.
struct Piece {
    size_t year;
    enum Kind { View, Names, Data } kind;
    size_t view;
    int scale; // 1 or 2
};

std::vector<Piece> piecesOf(size_t yearCount)
{
    std::vector<Piece> pieces;
    for (size_t y = 0; y < yearCount; ++y) {
        pieces.push_back({y, Piece::Data, 0, 1});
        for (size_t v = 0; v < views.size(); ++v)
            for (int scale : {1, 2})
                pieces.push_back({y, Piece::View, v, scale});
        for (int scale : {1, 2})
            pieces.push_back({y, Piece::Names, 0, scale});
    }
    return pieces;
}

QString pictureName(const char *name, int scale)
{
    return QString::fromLatin1(name) + (scale == 2 ? QStringLiteral("@2x.png") : QStringLiteral(".png"));
}

void writePiece(const Piece &piece, const WebMapYear &year, const QString &folder, int mapPixels)
{
    GameData fullView = *year.game;
    fullView.setFullView();
    const int pixels = mapPixels * piece.scale;
    try {
        switch (piece.kind) {
        case Piece::Data:
            writeFile(folder + QStringLiteral("/planets.js"), yearScript(year.year, fullView, year.legend));
            writeFile(folder + QStringLiteral("/panels.js"), panelsScript(year.year, fullView));
            break;
        case Piece::View:
            writeFile(folder + u'/' + pictureName(views[piece.view].id, piece.scale),
                      viewPicturePng(fullView, views[piece.view].layers, pixels));
            break;
        case Piece::Names:
            writeFile(folder + u'/' + pictureName("names", piece.scale), namesPicturePng(fullView, pixels));
            break;
        }
    } catch (const WebMapError &) {
        throw;
    } catch (const std::exception &e) {
        throw WebMapError(QStringLiteral("%1: drawing the map failed: %2")
                              .arg(escapeControls(year.game->MapFilePath), QString::fromUtf8(e.what())));
    }
}

} // namespace

std::span<const WebMapView> webMapViews()
{
    return views;
}

void writeWebMap(const QString &folder, const std::vector<WebMapYear> &years, const WebMapOptions &options,
                 const std::function<void(int, int)> &progress)
{
    WebMapFolder out(folder);
    const QString root = out.path();
    makeFolder(root + QStringLiteral("/data"));
    std::vector<int> yearNumbers;
    for (const WebMapYear &y : years) {
        makeFolder(root + QStringLiteral("/years/%1").arg(y.year));
        yearNumbers.push_back(y.year);
    }

    // Every picture of every year on every core; the first failure in year
    // order is the one reported, and stops the pieces not yet begun.
    const std::vector<Piece> pieces = piecesOf(years.size());
    std::vector<std::exception_ptr> failures(pieces.size());
    std::vector<size_t> order(pieces.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::atomic_bool failed = false;
    std::atomic_int done = 0;
    QThreadPool pool;
    QtConcurrent::blockingMap(&pool, order, [&](size_t i) {
        if (failed)
            return;
        const Piece &piece = pieces[i];
        const WebMapYear &year = years[piece.year];
        try {
            writePiece(piece, year, root + QStringLiteral("/years/%1").arg(year.year), options.mapPixels);
        } catch (...) {
            failures[i] = std::current_exception();
            failed = true;
        }
        if (progress)
            progress(++done, int(pieces.size()));
    });
    for (const std::exception_ptr &failure : failures)
        if (failure)
            std::rethrow_exception(failure);

    for (const char *name : pageFiles) {
        QFile page(QStringLiteral(":/webmap/%1").arg(QLatin1String(name)));
        if (!page.open(QIODevice::ReadOnly))
            throw WebMapError(QStringLiteral("the page's %1 is missing from the program").arg(QLatin1String(name)));
        writeFile(root + u'/' + QLatin1String(name), page.readAll());
    }
    writeFile(root + QStringLiteral("/data/site.js"), siteScript(options.title, options.mapPixels, yearNumbers));
    out.commit();
}

void writeWebMapOfGame(const GameData &game, const QString &folder)
{
    HistoryLegend legend;
    for (int k = 1; k <= game.PlayerCount; ++k) {
        const auto &rgb = game.RaceRGB[size_t(k - 1)];
        legend.push_back({game.player(k)[RaceName].text(), {rgb[0], rgb[1], rgb[2]}});
    }
    WebMapOptions options;
    options.title = QFileInfo(game.MapFilePath).completeBaseName();
    writeWebMap(folder, {{game.GameYear, &game, legend}}, options);
}
