#include "PlanetGridModel.h"

#include "Colour.h"
#include "Conversions.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

const PlanetGridColumn Columns[PlanetGridColumns] = {
    {"#", 500},           {"X Co-ord", 750},    {"Y Co-ord", 750},    {"Name", 1250},
    {"Owner", 1000},      {"Starbase", 1500},   {"Age", 1000},        {"Population", 1000},
    {"SOI ", 750},        {"Hab", 750},         {"Mines", 750},       {"Factories", 750},
    {"Resources", 750},   {"Defenses", 750},    {"Stored Iron", 1000}, {"Stored Bora", 1000},
    {"Stored Germ", 1000}, {"Iron MR", 750},    {"Bora MR", 750},     {"Germ MR", 750},
    {"Iron MC", 750},     {"Bora MC", 750},     {"Germ MC", 750},
};

int darkened(int component)
{
    return conv::toInt32(component / 3.0);
}

// Sorts `order` (indices into the rows) by one key per row; equal keys keep
// their order in both directions.
template <typename Key>
void sortByKeys(std::vector<int> &order, const std::vector<Key> &keys, Qt::SortOrder direction)
{
    if (direction == Qt::AscendingOrder)
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return keys[size_t(a)] < keys[size_t(b)]; });
    else
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return keys[size_t(b)] < keys[size_t(a)]; });
}

} // namespace

const PlanetGridColumn &planetGridColumn(int column)
{
    return Columns[column];
}

bool sortsAsNumber(int column)
{
    return column < 3 || column > 6;
}

QString planetGridText(const Value &field)
{
    if (field.isText() && field.rawText() == u"Unknown")
        return QStringLiteral("0");
    return field.text();
}

QColor planetGridTint(const GameData &d, const PlanetInfo &planet)
{
    const double owner = planet[OwnerIndex].val();
    // Generation only ever numbers owners 1..16; anything else has no colour.
    if (owner < 1 || owner > MaxPlayers)
        return Qt::black;
    const int32_t c = d.raceColour(int(owner));
    return QColor(darkened(redOf(c)), darkened(greenOf(c)), darkened(blueOf(c)));
}

void PlanetGridModel::fill(const GameData &d)
{
    beginResetModel();
    m_rows.clear();
    m_rows.reserve(d.Planets.size());
    for (const PlanetInfo &planet : d.Planets) {
        Row row;
        for (int c = 0; c < PlanetGridColumns; ++c)
            row.fields[size_t(c)] = planet[c + 1];
        row.tint = planetGridTint(d, planet);
        m_rows.push_back(std::move(row));
    }
    m_order.resize(m_rows.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    m_sortColumn = -1;
    endResetModel();
}

int PlanetGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_order.size());
}

int PlanetGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : PlanetGridColumns;
}

QString PlanetGridModel::text(int row, int column) const
{
    return planetGridText(rowAt(row).fields[size_t(column)]);
}

QVariant PlanetGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return text(index.row(), index.column());
    case Qt::BackgroundRole:
        return rowAt(index.row()).tint;
    case Qt::ForegroundRole:
        return QColor(Qt::white);
    case Qt::TextAlignmentRole:
        // Figures line up on the right, names on the left.
        return QVariant::fromValue(Qt::AlignVCenter | (sortsAsNumber(index.column()) ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return {};
    }
}

QVariant PlanetGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= PlanetGridColumns)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole)
        return QString::fromLatin1(Columns[section].heading);
    // Screen readers learn the order that sighted users see in the heading's arrow.
    if (role == Qt::AccessibleDescriptionRole && section == m_sortColumn)
        return m_sortOrder == Qt::AscendingOrder ? QStringLiteral("Sorted ascending") : QStringLiteral("Sorted descending");
    return {};
}

void PlanetGridModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= PlanetGridColumns)
        return;
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const std::vector<int> before = m_order;
    if (sortsAsNumber(column)) {
        std::vector<double> keys(m_rows.size());
        for (size_t i = 0; i < m_rows.size(); ++i)
            keys[i] = conv::val(planetGridText(m_rows[i].fields[size_t(column)]));
        sortByKeys(m_order, keys, order);
    } else {
        std::vector<QString> keys(m_rows.size());
        for (size_t i = 0; i < m_rows.size(); ++i)
            keys[i] = planetGridText(m_rows[i].fields[size_t(column)]).toCaseFolded();
        sortByKeys(m_order, keys, order);
    }

    // Selections and the current cell follow their rows.
    std::vector<int> newRowOf(m_rows.size());
    for (size_t r = 0; r < m_order.size(); ++r)
        newRowOf[size_t(m_order[r])] = int(r);
    const QModelIndexList from = persistentIndexList();
    QModelIndexList to;
    to.reserve(from.size());
    for (const QModelIndex &index : from)
        to << this->index(newRowOf[size_t(before[size_t(index.row())])], index.column());
    changePersistentIndexList(from, to);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
    const int previous = std::exchange(m_sortColumn, column);
    m_sortOrder = order;
    emit headerDataChanged(Qt::Horizontal, previous < 0 ? column : qMin(previous, column), qMax(previous, column));
}
