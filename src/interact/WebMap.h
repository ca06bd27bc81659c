#pragma once
// A game published as a web map: a folder that a browser opens from disk or
// from any static web server, with the map of each year drawn ahead in every
// view by the same redraw as `render`, the planets' pick points and detail
// panels as `planet` writes them, and the page (index.html, its script and
// style) that shows them. Nothing in it reaches outside the folder.
//
//   index.html, map.js, map.css        the page
//   data/site.js                       the title, the years, the views
//   years/YEAR/planets.js              the year's view, planets and races
//   years/YEAR/panels.js               the year's planets' detail panels
//   years/YEAR/VIEW.png, VIEW@2x.png   each view at the map's size and twice it
//   years/YEAR/names.png, names@2x.png the planet names alone, to lay over a view

#include "GameData.h"
#include "HistoryFrame.h"
#include "OverlayButtons.h"

#include <QString>
#include <functional>
#include <span>
#include <vector>

struct WebMapView {
    const char *id;                    // the pictures' file name
    std::vector<OverlayButton> layers; // the overlay buttons pressed
};
// The views every year is drawn in, the first shown first.
std::span<const WebMapView> webMapViews();

struct WebMapYear {
    int year;
    const GameData *game;  // loaded, in the year's race colours (drawn in the full view)
    HistoryLegend legend;  // the races present, with their colours
};

struct WebMapOptions {
    QString title;        // the page's heading: the game's name
    int mapPixels = 800;  // the map's side in the page at 100 %
};

// Writes the web map of `years` (in year order) to `folder`, replacing a web
// map written there before, and nothing there when it fails (WebMapError).
// `progress` is called from any thread as each of `total` pieces is done.
void writeWebMap(const QString &folder, const std::vector<WebMapYear> &years, const WebMapOptions &options,
                 const std::function<void(int done, int total)> &progress = {});

// The game as loaded (in the desktop program) as a web map of its one year,
// its game year, in the race colours it has now, titled by its map file.
void writeWebMapOfGame(const GameData &game, const QString &folder);
