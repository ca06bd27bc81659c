#pragma once
// "Planet Grid": every planet of the loaded game in a table, one row per
// planet tinted in its owner's colour. A click on a heading sorts by that
// column, ascending with the left button and descending with any other.
// Selected cells copy to the clipboard as tab-separated text.

#include "PlanetGridModel.h"

#include <QDialog>

class QTableView;

class PlanetGridWindow : public QDialog {
    Q_OBJECT
public:
    static constexpr int TwipsPerPixel = 15;
    // The window is never smaller than this, frame included.
    static constexpr int MinimumOuterTwips = 2000;

    explicit PlanetGridWindow(QWidget *parent = nullptr);

    // Refills the table from scratch with a snapshot of the planet table.
    void fill(const GameData &d);

    QTableView *table() const { return m_table; }
    PlanetGridModel &model() { return m_model; }
    // The selected cells as rows of tab-separated text, in the order shown.
    QString selectedText() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void sortFromHeading(const QPoint &position, Qt::MouseButton button);
    void keepMinimumSize();

    PlanetGridModel m_model;
    QTableView *m_table = nullptr;
    // A heading press sorts on its release, unless it dragged a column's
    // edge to resize the column.
    int m_pressedSection = -1;
    bool m_headingResized = false;
};
