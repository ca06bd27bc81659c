#pragma once
// The planet grid's table: a snapshot of the first 23 fields of every
// planet, one row per planet in table order, each row tinted with a
// darkened colour of its owner. Sorting reorders the snapshot's rows only;
// the game data is never touched and never followed after the snapshot.

#include "GameData.h"

#include <QAbstractTableModel>
#include <QColor>
#include <array>
#include <vector>

constexpr int PlanetGridColumns = 23;

struct PlanetGridColumn {
    const char *heading;
    int widthTwips;
};

// Column c shows planet field c + 1.
const PlanetGridColumn &planetGridColumn(int column);

// Columns 3 to 6 (name, owner, starbase, age) sort as text ignoring case,
// all others by their leading number.
bool sortsAsNumber(int column);

// A cell's text: "0" for a field that is exactly the text "Unknown", so
// that unknown values count as zeros; anything else as written.
QString planetGridText(const Value &field);

// The owner's race colour with each component divided by 3 (half to even);
// black for a planet without a known owner.
QColor planetGridTint(const GameData &d, const PlanetInfo &planet);

class PlanetGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    // Takes a fresh snapshot of the planet table, in table order.
    void fill(const GameData &d);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // Sorts the rows as they stand by `column`, numbers or text by the
    // column's kind. Equal keys keep their order, so one sort after
    // another groups by the last column and keeps the earlier order inside.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    // The column sorted by last, -1 while the rows are in table order.
    int sortColumn() const { return m_sortColumn; }
    Qt::SortOrder sortOrder() const { return m_sortOrder; }

    // The text of the cell at grid row `row` (0 = first planet row).
    QString text(int row, int column) const;

private:
    struct Row {
        std::array<Value, PlanetGridColumns> fields;
        QColor tint;
    };
    const Row &rowAt(int row) const { return m_rows[size_t(m_order[size_t(row)])]; }

    std::vector<Row> m_rows;  // table order
    std::vector<int> m_order; // grid row -> index into m_rows
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};
