#include "PlanetGridWindow.h"

#include "Conversions.h"
#include "ScreenFit.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>
#include <map>

namespace {

int twipsToPixels(int twips)
{
    return conv::toInt32(double(twips) / PlanetGridWindow::TwipsPerPixel);
}

} // namespace

PlanetGridWindow::PlanetGridWindow(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("Grid"));
    setWindowTitle(QStringLiteral("Planet Grid"));
    setModal(true);

    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("DG"));
    m_table->setAccessibleName(QStringLiteral("Planet Grid"));
    m_table->setModel(&m_model);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setWordWrap(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    QHeaderView *heading = m_table->horizontalHeader();
    heading->setSectionsClickable(false);
    heading->setHighlightSections(false);
    // Narrow columns cut their headings short; the start reads best.
    heading->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    heading->setSectionResizeMode(QHeaderView::Interactive);
    heading->setToolTip(QStringLiteral("Left click sorts ascending, right click descending"));
    // The arrow marks the column the rows are sorted by; the grid sorts
    // itself from the heading's clicks, so the header's own sorting stays off.
    heading->setSortIndicatorShown(true);
    heading->setSortIndicator(m_model.sortColumn(), m_model.sortOrder());
    for (int c = 0; c < PlanetGridColumns; ++c)
        heading->resizeSection(c, twipsToPixels(planetGridColumn(c).widthTwips));
    heading->viewport()->installEventFilter(this);
    m_table->installEventFilter(this);
    connect(heading, &QHeaderView::sectionResized, this, [this] { m_headingResized = true; });

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table);

    // Wide enough for every column where the screen allows.
    int width = m_table->verticalScrollBar()->sizeHint().width() + 2 * m_table->frameWidth();
    for (int c = 0; c < PlanetGridColumns; ++c)
        width += heading->sectionSize(c);
    resize(sizeWithinScreen(this, QSize(width, 600)));
    keepMinimumSize();
}

void PlanetGridWindow::fill(const GameData &d)
{
    m_model.fill(d);
    // A fresh snapshot is in table order, sorted by no column.
    m_table->horizontalHeader()->setSortIndicator(m_model.sortColumn(), m_model.sortOrder());
    m_table->clearSelection();
    m_table->scrollToTop();
}

void PlanetGridWindow::sortFromHeading(const QPoint &position, Qt::MouseButton button)
{
    const int column = m_table->horizontalHeader()->logicalIndexAt(position);
    if (column < 0)
        return;
    m_model.sort(column, button == Qt::LeftButton ? Qt::AscendingOrder : Qt::DescendingOrder);
    m_table->horizontalHeader()->setSortIndicator(m_model.sortColumn(), m_model.sortOrder());
}

bool PlanetGridWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_table->horizontalHeader()->viewport()) {
        if (event->type() == QEvent::MouseButtonPress) {
            const auto *mouse = static_cast<QMouseEvent *>(event);
            m_pressedSection = m_table->horizontalHeader()->logicalIndexAt(mouse->position().toPoint());
            m_headingResized = false;
        } else if (event->type() == QEvent::MouseButtonRelease) {
            const auto *mouse = static_cast<QMouseEvent *>(event);
            const QPoint at = mouse->position().toPoint();
            if (!m_headingResized && m_pressedSection >= 0
                && m_table->horizontalHeader()->logicalIndexAt(at) == m_pressedSection)
                sortFromHeading(at, mouse->button());
            m_pressedSection = -1;
        }
    } else if (watched == m_table && event->type() == QEvent::KeyPress
               && static_cast<QKeyEvent *>(event)->matches(QKeySequence::Copy)) {
        QGuiApplication::clipboard()->setText(selectedText());
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

QString PlanetGridWindow::selectedText() const
{
    // The block spanned by the selection, unselected cells inside it empty.
    std::map<int, std::map<int, QString>> cells;
    int first = PlanetGridColumns, last = -1;
    for (const QModelIndex &index : m_table->selectionModel()->selectedIndexes()) {
        cells[index.row()][index.column()] = m_model.text(index.row(), index.column());
        first = qMin(first, index.column());
        last = qMax(last, index.column());
    }
    QString text;
    for (const auto &[row, columns] : cells) {
        for (int c = first; c <= last; ++c) {
            if (c > first)
                text += u'\t';
            const auto cell = columns.find(c);
            if (cell != columns.end())
                text += cell->second;
        }
        text += u'\n';
    }
    return text;
}

void PlanetGridWindow::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    keepMinimumSize();
}

void PlanetGridWindow::keepMinimumSize()
{
    // The frame is the window system's: its size is known only once shown.
    const QSize frame = frameGeometry().size() - size();
    const int outer = twipsToPixels(MinimumOuterTwips);
    setMinimumSize(qMax(1, outer - frame.width()), qMax(1, outer - frame.height()));
}
