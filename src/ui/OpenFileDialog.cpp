#include "OpenFileDialog.h"

#include "MessageSink.h"
#include "ScreenFit.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStorageInfo>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

QString cleanFolder(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

// Captions are file names; an ampersand in one must not become a shortcut.
QString plainCaption(QString text)
{
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace

OpenFileDialog::OpenFileDialog(FileSelection &selection, GameData &data, QWidget *parent)
    : QDialog(parent), m_data(data), m_selection(selection)
{
    setWindowTitle(QStringLiteral("Open Stars! game files"));
    setModal(true);

    m_drives = new QComboBox;
    m_drives->setObjectName(QStringLiteral("Drive1"));
    fillDrives();
    connect(m_drives, &QComboBox::activated, this,
            [this](int index) { goToDrive(m_drives->itemData(index).toString()); });

    m_folderModel = new QFileSystemModel(this);
    m_folderModel->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
    m_folderModel->setRootPath(QString());
    m_folderView = new QTreeView;
    m_folderView->setObjectName(QStringLiteral("Dir1"));
    m_folderView->setModel(m_folderModel);
    m_folderView->setHeaderHidden(true);
    for (int column = 1; column < m_folderModel->columnCount(); ++column)
        m_folderView->hideColumn(column);
    // The user's own choice in the list: it stays where the user sees it.
    connect(m_folderView->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &current) {
                if (m_moving || !current.isValid())
                    return;
                m_revealing = false;
                moveTo(m_folderModel->filePath(current));
            });
    m_folderView->viewport()->installEventFilter(this);
    connect(m_folderView->verticalScrollBar(), &QScrollBar::sliderPressed, this, [this] { m_revealing = false; });
    // The model reads folders in the background and sorts them later; rows
    // that arrive or move above the current folder push it out of sight
    // again, so it is brought back.
    connect(m_folderModel, &QFileSystemModel::rowsInserted, this, [this](const QModelIndex &parent) {
        if (m_folder.startsWith(m_folderModel->filePath(parent)))
            scheduleReveal();
    });
    connect(m_folderModel, &QFileSystemModel::layoutChanged, this, &OpenFileDialog::scheduleReveal);

    // Games copied from Windows name their map files GAME.MAP; without
    // QDir::CaseSensitive the pattern matches in any case.
    m_fileModel = new QFileSystemModel(this);
    m_fileModel->setFilter(QDir::Files);
    m_fileModel->setNameFilters({QStringLiteral("*.map")});
    m_fileModel->setNameFilterDisables(false);
    m_fileView = new QListView;
    m_fileView->setObjectName(QStringLiteral("File1"));
    m_fileView->setModel(m_fileModel);
    // A click picks a file; from the keyboard, Enter or Space on the
    // current file does. Not `activated`: some styles raise it on the same
    // single click, which would pick the file twice.
    connect(m_fileView, &QListView::clicked, this, [this](const QModelIndex &index) {
        if (index.isValid())
            clickMapFile(m_fileModel->fileName(index));
    });
    m_fileView->installEventFilter(this);

    auto *lists = new QVBoxLayout;
    lists->addWidget(m_drives);
    lists->addWidget(m_folderView, 3);
    lists->addWidget(m_fileView, 2);

    m_chosenMap = new ChosenMapLabel;

    m_raceHint = new QLabel(QStringLiteral("Mark the option button next to the file which represents your race"));
    m_raceHint->setObjectName(QStringLiteral("Label1"));
    m_raceHint->setWordWrap(true);

    m_players = new QButtonGroup(this);
    auto *rows = new QGridLayout;
    for (int i = 0; i <= MaxPlayers; ++i) {
        RowControls &row = m_rows[size_t(i)];
        row.check = new QCheckBox;
        row.check->setObjectName(QStringLiteral("Check1(%1)").arg(i));
        row.player = new QRadioButton;
        row.player->setObjectName(QStringLiteral("Player(%1)").arg(i));
        row.year = new QLineEdit;
        row.year->setObjectName(QStringLiteral("TxtPxYear(%1)").arg(i));
        row.year->setMaximumWidth(70);
        m_players->addButton(row.player, i);
        rows->addWidget(row.check, i, 0);
        rows->addWidget(row.player, i, 1);
        rows->addWidget(row.year, i, 2);

        connect(row.check, &QCheckBox::clicked, this, [this, i] {
            m_selection.toggleRow(i);
            showRows();
        });
        connect(row.player, &QRadioButton::clicked, this, [this, i] { m_selection.chooseOwnRace(i); });
        connect(row.year, &QLineEdit::textChanged, this,
                [this, i](const QString &text) { m_selection.row(i).yearText = text; });
    }
    rows->setColumnStretch(0, 1);

    auto *gameYearLabel = new QLabel(QStringLiteral("Current Game Year:"));
    gameYearLabel->setObjectName(QStringLiteral("Label2"));
    m_gameYear = new QLineEdit;
    m_gameYear->setObjectName(QStringLiteral("txtGameYear"));
    m_gameYear->setMaximumWidth(70);
    gameYearLabel->setBuddy(m_gameYear);
    connect(m_gameYear, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_selection.gameYearText = text; });
    auto *gameYear = new QHBoxLayout;
    gameYear->addStretch();
    gameYear->addWidget(gameYearLabel);
    gameYear->addWidget(m_gameYear);

    auto *buttons = new QDialogButtonBox;
    m_load = buttons->addButton(QStringLiteral("Load && Generate Data"), QDialogButtonBox::AcceptRole);
    m_load->setObjectName(QStringLiteral("Command1"));
    m_cancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    m_cancel->setObjectName(QStringLiteral("Command2"));
    connect(m_load, &QPushButton::clicked, this, &OpenFileDialog::confirm);
    connect(m_cancel, &QPushButton::clicked, this, &OpenFileDialog::reject);

    auto *choice = new QVBoxLayout;
    choice->addWidget(m_chosenMap);
    choice->addWidget(m_raceHint);
    choice->addLayout(rows);
    choice->addStretch();
    choice->addLayout(gameYear);
    choice->addWidget(buttons);

    auto *layout = new QHBoxLayout(this);
    layout->addLayout(lists, 1);
    layout->addLayout(choice, 1);
    resize(sizeWithinScreen(this, QSize(640, 480)));
    keepHeightForWidth(this);

    showRows();
}

QString OpenFileDialog::drive() const
{
    return m_drives->currentData().toString();
}

void OpenFileDialog::fillDrives()
{
    QStringList roots;
    for (const QStorageInfo &volume : QStorageInfo::mountedVolumes())
        if (volume.isValid() && volume.isReady())
            roots << volume.rootPath();
    roots.sort();
    roots.removeDuplicates();
    for (const QString &root : roots)
        m_drives->addItem(QDir::toNativeSeparators(root), root);
}

void OpenFileDialog::showDriveOf(const QString &folder)
{
    const QString root = QStorageInfo(folder).rootPath();
    int index = m_drives->findData(root);
    if (index < 0 && !root.isEmpty()) {
        // Mounted after the list was filled.
        m_drives->addItem(QDir::toNativeSeparators(root), root);
        index = m_drives->count() - 1;
    }
    const QSignalBlocker blocker(m_drives);
    m_drives->setCurrentIndex(index);
}

void OpenFileDialog::goToDrive(const QString &root)
{
    goToFolder(root);
}

void OpenFileDialog::goToFolder(const QString &path)
{
    m_revealing = true;
    moveTo(path);
    revealFolder();
}

void OpenFileDialog::moveTo(const QString &path)
{
    m_placed = true;
    m_folder = cleanFolder(path);
    showDriveOf(m_folder);

    m_moving = true;
    const QModelIndex folderIndex = m_folderModel->index(m_folder);
    m_folderView->setCurrentIndex(folderIndex);
    m_fileModel->setRootPath(m_folder);
    m_fileView->setRootIndex(m_fileModel->index(m_folder));
    markChosenMap();
    m_moving = false;

    // The folder no longer is the game's until a map file is clicked.
    m_data.GameDir = QStringLiteral(" ");
}

void OpenFileDialog::scheduleReveal()
{
    if (m_revealPending || !m_revealing)
        return;
    m_revealPending = true;
    QTimer::singleShot(0, this, &OpenFileDialog::revealFolder);
}

// Opens the tree down to the folder and scrolls it into the middle, so the
// window opens on the game's folder rather than on a collapsed root.
void OpenFileDialog::revealFolder()
{
    m_revealPending = false;
    if (!m_revealing)
        return;
    const QModelIndex folder = m_folderModel->index(m_folder);
    if (!folder.isValid())
        return;
    for (QModelIndex above = folder.parent(); above.isValid(); above = above.parent())
        m_folderView->expand(above);
    m_moving = true;
    m_folderView->setCurrentIndex(folder);
    m_moving = false;
    m_folderView->scrollTo(folder, QAbstractItemView::PositionAtCenter);
}

void OpenFileDialog::markChosenMap()
{
    // Another folder's files are only listed: none of them looks chosen
    // until it is clicked.
    const QFileInfo chosen(m_data.MapFilePath);
    if (!m_data.MapFilePath.isEmpty() && cleanFolder(chosen.absolutePath()) == m_folder)
        m_fileView->setCurrentIndex(m_fileModel->index(chosen.absoluteFilePath()));
    else
        m_fileView->selectionModel()->clear();
}

void OpenFileDialog::clickMapFile(const QString &fileName)
{
    const QString message = m_selection.clickMapFile(m_folder, fileName);
    markChosenMap();
    showRows();
    if (!message.isEmpty())
        showMessage(this, message);
}

bool OpenFileDialog::openOn(const QString &mapFilePath)
{
    const QFileInfo file(mapFilePath);
    if (!file.isFile())
        return false;
    goToFolder(file.absolutePath());
    m_fileView->setCurrentIndex(m_fileModel->index(file.absoluteFilePath()));
    clickMapFile(file.fileName());
    return true;
}

void OpenFileDialog::confirm()
{
    const QString message = m_selection.confirm();
    if (message.isEmpty()) {
        QDialog::accept();
        return;
    }
    showMessage(this, message);
    // The first two checks rebuild the rows from the folder, which may have
    // a message of its own (no reports left).
    const QString followUp = m_selection.takeFollowUpMessage();
    if (!followUp.isEmpty())
        showMessage(this, followUp);
    showRows();
}

void OpenFileDialog::reject()
{
    m_selection.cancel();
    QDialog::reject();
}

bool OpenFileDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_folderView->viewport()
        && (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Wheel))
        m_revealing = false;
    if (watched == m_fileView && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        const QModelIndex current = m_fileView->currentIndex();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) && current.isValid()) {
            clickMapFile(m_fileModel->fileName(current));
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void OpenFileDialog::showEvent(QShowEvent *event)
{
    if (!m_placed) {
        // Without the game's install folder (or on a system where it names
        // a drive that is not there) the window opens on the home folder.
        const QString start = m_data.StartDir;
        goToFolder(!start.trimmed().isEmpty() && QFileInfo(start).isDir() ? start : QDir::homePath());
    }
    showRows();
    QDialog::showEvent(event);
    // Only a laid-out view knows where the centre is.
    m_revealing = true;
    QTimer::singleShot(0, this, &OpenFileDialog::revealFolder);
}

void OpenFileDialog::showRows()
{
    // An option is only ever unset from code, which an exclusive group
    // does not allow.
    m_players->setExclusive(false);
    for (int i = 0; i <= MaxPlayers; ++i) {
        const FileSelection::Row &row = m_selection.row(i);
        const RowControls &controls = m_rows[size_t(i)];
        const QSignalBlocker checkBlocker(controls.check);
        const QSignalBlocker playerBlocker(controls.player);
        const QSignalBlocker yearBlocker(controls.year);
        controls.check->setText(plainCaption(row.caption));
        // The option and the year box sit beside the file's name: screen readers get it in theirs.
        controls.player->setAccessibleName(QStringLiteral("Your race: ") + plainCaption(row.caption));
        controls.year->setAccessibleName(QStringLiteral("Year of ") + plainCaption(row.caption));
        controls.check->setChecked(row.checked);
        controls.check->setVisible(row.shown);
        controls.player->setChecked(row.optionShown && i == m_data.OwnRace);
        controls.player->setVisible(row.optionShown);
        if (controls.year->text() != row.yearText)
            controls.year->setText(row.yearText);
        controls.year->setVisible(row.optionShown);
    }
    m_players->setExclusive(true);

    const QSignalBlocker gameYearBlocker(m_gameYear);
    if (m_gameYear->text() != m_selection.gameYearText)
        m_gameYear->setText(m_selection.gameYearText);
    m_raceHint->setVisible(m_selection.ownRaceHintShown());
    m_chosenMap->setMapFile(m_data.MapFilePath);
    m_load->setEnabled(m_selection.loadEnabled());
}
