#include "PlanetFinder.h"

#include "Conversions.h"
#include "MapView.h"

QStringList PlanetFinder::names() const
{
    QStringList names;
    names.reserve(d.PlanetCount);
    for (int i = 1; i <= d.PlanetCount; ++i) {
        const QString name = d.planet(i)[Name].text().trimmed();
        if (!name.isEmpty())
            names << name;
    }
    names.sort(Qt::CaseInsensitive);
    names.removeDuplicates();
    return names;
}

int PlanetFinder::match(const QString &text) const
{
    const QString wanted = text.trimmed();
    if (wanted.isEmpty())
        return 0;
    int startsWith = 0, holds = 0;
    for (int i = 1; i <= d.PlanetCount; ++i) {
        const QString name = d.planet(i)[Name].text().trimmed();
        if (name.compare(wanted, Qt::CaseInsensitive) == 0)
            return i;
        if (!startsWith && name.startsWith(wanted, Qt::CaseInsensitive))
            startsWith = i;
        if (!holds && name.contains(wanted, Qt::CaseInsensitive))
            holds = i;
    }
    return startsWith ? startsWith : holds;
}

void PlanetFinder::show(int row)
{
    marker.mark(row);
    // Only a finished zoom moves: the full view shows every planet it can,
    // and a zoom under way owns the view until its second corner.
    const PlanetInfo &p = d.planet(row);
    if (zoom.ZoomArmed == 1 && zoom.ZoomState == 0 && !inView(d, p)) {
        const int32_t width = d.FarX - d.OriginX, height = d.FarY - d.OriginY;
        d.OriginX = conv::toInt32(p[X].val()) - width / 2;
        d.OriginY = conv::toInt32(p[Y].val()) - height / 2;
        d.FarX = d.OriginX + width;
        d.FarY = d.OriginY + height;
    }
    // The working values of the hab estimate start afresh, as with a click.
    HabCarry carry;
    detail.fill(d, row, carry);
}
