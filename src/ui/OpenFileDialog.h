#pragma once
// "Open Stars! game files": the modal window in which the user picks a
// game's universe map file, the reports to read, the own race and the
// years. The rules live in FileSelection; this window only shows its rows
// and hands it the user's clicks. The caller keeps one instance so that the
// rows stay as the user left them between showings.

#include "ChosenMapLabel.h"
#include "FileSelection.h"

#include <QDialog>
#include <array>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QFileSystemModel;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QRadioButton;
class QTreeView;

class OpenFileDialog : public QDialog {
    Q_OBJECT
public:
    OpenFileDialog(FileSelection &selection, GameData &data, QWidget *parent = nullptr);

    // Goes to the folder of `mapFilePath` and clicks the file there as the
    // user would (its message, if any, is shown). False, with nothing
    // changed, when there is no such file.
    bool openOn(const QString &mapFilePath);

    // The folder that the folder list shows and the file list lists.
    QString folder() const { return m_folder; }
    // The root of the volume chosen in the drive list.
    QString drive() const;

    QComboBox *driveList() const { return m_drives; }
    QTreeView *folderList() const { return m_folderView; }
    QListView *fileList() const { return m_fileView; }
    QCheckBox *check(int row) const { return m_rows[size_t(row)].check; }
    QRadioButton *player(int row) const { return m_rows[size_t(row)].player; }
    QLineEdit *yearBox(int row) const { return m_rows[size_t(row)].year; }
    QLineEdit *gameYearBox() const { return m_gameYear; }
    QLabel *raceHint() const { return m_raceHint; }
    // The map file the rows go with, the one that loads: the map clicked last.
    QLabel *chosenMap() const { return m_chosenMap; }
    QPushButton *loadButton() const { return m_load; }
    QPushButton *cancelButton() const { return m_cancel; }

public slots:
    // A folder change from code: the folder list shows `path`, the file
    // list lists it, and GameDir becomes " " until a map file is clicked
    // again. The rows stay as they are.
    void goToFolder(const QString &path);
    // A drive change: the folder list moves to the volume's root.
    void goToDrive(const QString &root);
    // A click on the map file `fileName` of the current folder.
    void clickMapFile(const QString &fileName);
    // "Load && Generate Data": accepts when the choice passes its checks.
    void confirm();
    // "Cancel", Escape or closing the window.
    void reject() override;

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct RowControls {
        QCheckBox *check = nullptr;
        QRadioButton *player = nullptr;
        QLineEdit *year = nullptr;
    };

    void fillDrives();
    void showDriveOf(const QString &folder);
    // The folder change itself, wherever it came from.
    void moveTo(const QString &path);
    // Scrolls the folder list so that the current folder shows.
    void revealFolder();
    void scheduleReveal();
    // Marks the chosen map in the file list when it lies in the folder shown.
    void markChosenMap();
    void showRows();

    GameData &m_data;
    FileSelection &m_selection;
    bool m_placed = false;      // a folder has been chosen (opening or caller)
    bool m_moving = false;      // the lists are being moved from code
    // The folder was chosen from code, and the folder list keeps it in
    // sight while the folders above it are read, until the user takes the
    // list in hand. Never after the user's own click in it: a list that
    // scrolls under the pointer would pick the neighbouring folder.
    bool m_revealing = false;
    bool m_revealPending = false; // the tree is to be scrolled back to the folder
    QString m_folder;

    QComboBox *m_drives = nullptr;
    QFileSystemModel *m_folderModel = nullptr;
    QTreeView *m_folderView = nullptr;
    QFileSystemModel *m_fileModel = nullptr;
    QListView *m_fileView = nullptr;
    std::array<RowControls, MaxPlayers + 1> m_rows;
    QButtonGroup *m_players = nullptr;
    QLineEdit *m_gameYear = nullptr;
    ChosenMapLabel *m_chosenMap = nullptr;
    QLabel *m_raceHint = nullptr;
    QPushButton *m_load = nullptr;
    QPushButton *m_cancel = nullptr;
};
