#pragma once
// One frame of a game's history: the map square exactly as the redraw draws
// it, and beside it, outside the map, the year and the races present with
// their colours. Every frame of a history has the same size.

#include "GameData.h"
#include "OverlayButtons.h"
#include "RedrawHost.h"
#include "StableRaceColours.h"

#include <QImage>
#include <QRect>
#include <QStringList>
#include <vector>

class HistoryFrameLayout {
public:
    // `races`: every race of the history, whose names the legend must fit;
    // `mostRaces`: the most races present in one turn.
    HistoryFrameLayout(int mapPixels, const QStringList &races, int mostRaces);

    QSize size() const { return m_size; }
    QRect mapSquare() const { return {0, 0, m_mapPixels, m_mapPixels}; }
    QRect panel() const { return {m_mapPixels, 0, m_size.width() - m_mapPixels, m_size.height()}; }

private:
    int m_mapPixels;
    QSize m_size;
};

using HistoryLegend = std::vector<StableRaceColours::Race>;

// Draws the map of `game` with `layers` pressed into the layout's map square
// and the year and legend beside it; on a high-density screen at its device
// pixels (the image then carries the ratio).
QImage drawHistoryFrame(GameData &game, OverlayButtons layers, const HistoryFrameLayout &layout, int year,
                        const HistoryLegend &legend, RedrawHost &host, double devicePixelRatio = 1.0);
