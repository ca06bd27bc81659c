#pragma once
// What the pointer's tools ask of the window around the map: a redraw of
// the map, a line of text from the user, a message.

#include <QString>

class InteractionHost {
public:
    virtual ~InteractionHost() = default;
    // Runs the map redraw, as an overlay button's click does.
    virtual void redraw() = 0;
    // Asks for a line of text; a cancelled prompt answers "".
    virtual QString askText(const QString &message, const QString &title, const QString &defaultAnswer) = 0;
    virtual void showMessage(const QString &text) = 0;
};
