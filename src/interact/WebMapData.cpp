#include "WebMapData.h"

#include "LayerNames.h"
#include "MapPick.h"
#include "PlanetQuery.h"
#include "WebMap.h"

#include <QColor>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QByteArray script(const char *call, const QJsonObject &data)
{
    return QByteArray("veltroMap.") + call + '(' + QJsonDocument(data).toJson(QJsonDocument::Compact) + ");\n";
}

QString viewCaption(const WebMapView &view)
{
    QStringList captions;
    for (OverlayButton b : view.layers)
        for (const LayerName &layer : layerNames())
            if (layer.button == b)
                captions << QString::fromLatin1(layer.caption);
    return captions.join(QStringLiteral(" + "));
}

// The slices as [start, end, FillColor].
QJsonArray pieRows(const QJsonArray &slices)
{
    QJsonArray rows;
    for (const QJsonValue &slice : slices)
        rows.append(QJsonArray{slice[u"start"], slice[u"end"], slice[u"FillColor"]});
    return rows;
}

// What a click on the planet alone shows, as `planet --number` writes it,
// without what every planet shares and with the labels' values in the
// order of the site's label names: a thousand planets' panels stay small.
QJsonObject panel(const GameData &game, int row)
{
    QJsonObject o;
    try {
        o = planetPanelJson(game, row);
    } catch (const PanelFillError &e) {
        return {{QStringLiteral("Error"), e.message}};
    }
    const QJsonObject detail = o[u"Detail"].toObject();
    QJsonArray labels;
    for (int i = 0; i < DetailLabelCount; ++i)
        labels.append(detail[QLatin1String(detailLabelName(i))]);
    return {{QStringLiteral("Detail"), labels},
            {QStringLiteral("RHab"), o[u"RHab"]},
            {QStringLiteral("Pie1"), pieRows(o[u"Pie1"].toArray())},
            {QStringLiteral("Pie2"), pieRows(o[u"Pie2"].toArray())}};
}

} // namespace

QByteArray siteScript(const QString &title, int mapPixels, const std::vector<int> &years)
{
    QJsonArray yearList;
    for (int y : years)
        yearList.append(y);
    QJsonArray views;
    for (const WebMapView &view : webMapViews())
        views.append(QJsonObject{{QStringLiteral("id"), QLatin1String(view.id)},
                                 {QStringLiteral("caption"), viewCaption(view)}});
    QJsonArray labels;
    for (int i = 0; i < DetailLabelCount; ++i)
        labels.append(QLatin1String(detailLabelName(i)));
    return script("site", {{QStringLiteral("title"), title},
                           {QStringLiteral("labels"), labels},
                           {QStringLiteral("pixels"), mapPixels},
                           {QStringLiteral("years"), yearList},
                           {QStringLiteral("views"), views}});
}

QByteArray yearScript(int year, const GameData &game, const HistoryLegend &legend)
{
    QJsonArray races;
    for (const StableRaceColours::Race &race : legend)
        races.append(QJsonObject{
            {QStringLiteral("name"), race.name},
            {QStringLiteral("colour"), QColor(race.colour[0], race.colour[1], race.colour[2]).name()}});
    // The "Hab" tab's race names, as every panel of the year shows them.
    PlanetDetail named;
    named.nameRaces(game);
    QJsonArray names;
    for (const QString &name : named.RName)
        names.append(name);
    QJsonArray planets;
    for (int row = 1; row <= game.PlanetCount; ++row) {
        const PlanetInfo &p = game.planet(row);
        const PickPoint at = pickPoint(game, p);
        planets.append(QJsonArray{at.x, at.y, p[Name].text()});
    }
    return script("year", {{QStringLiteral("year"), year},
                           {QStringLiteral("Scale"), game.Scale},
                           {QStringLiteral("OriginX"), game.OriginX},
                           {QStringLiteral("OriginY"), game.OriginY},
                           {QStringLiteral("races"), races},
                           {QStringLiteral("RName"), names},
                           {QStringLiteral("planets"), planets}});
}

QByteArray panelsScript(int year, const GameData &game)
{
    QJsonArray panels;
    for (int row = 1; row <= game.PlanetCount; ++row)
        panels.append(panel(game, row));
    return script("panels", {{QStringLiteral("year"), year}, {QStringLiteral("panels"), panels}});
}
