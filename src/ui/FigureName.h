#pragma once
// The accessible name of a figure whose caption stands in another cell of
// a table (a row heading and a column heading). A buddy ties a value to one
// caption only, so the name carries the caption and the figure together:
// screen readers read a figure's name, and a bare "197" tells nothing.

#include <QString>

inline QString figureName(const QString &caption, const QString &figure)
{
    return figure.isEmpty() ? caption : caption + QStringLiteral(": ") + figure;
}
