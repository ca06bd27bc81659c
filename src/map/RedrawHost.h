#pragma once
// What the redraw asks of the window around the map: the drawing tools and
// colours it selects, the progress bar and the message box. The command line
// prints the message and ignores the rest.

#include <QString>

class RedrawHost {
public:
    virtual ~RedrawHost() = default;
    // Selects "Stop Drawing", the tool in which clicks pick planets or zoom.
    virtual void selectStopDrawing() {}
    virtual void enableDrawingTools() {}
    // Selects the first annotation colour button.
    virtual void selectFirstDrawColour() {}
    virtual void progressStart(int /*maximum*/) {}
    virtual void progressStep() {}
    virtual void showMessage(const QString &) {}
    // A message about one file: the window shows the message as it is, the
    // command line says which file it means.
    virtual void showFileMessage(const QString &, const QString &text) { showMessage(text); }
};
