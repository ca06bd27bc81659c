#include "ChosenMapLabel.h"

#include <QDir>
#include <QFileInfo>

ChosenMapLabel::ChosenMapLabel(QWidget *parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("ChosenMap"));
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setMapFile({});
}

void ChosenMapLabel::setMapFile(const QString &path)
{
    const QFileInfo chosen(path);
    m_name = path.isEmpty() ? QString() : chosen.fileName();
    m_folder = path.isEmpty() ? QString() : QDir::toNativeSeparators(chosen.absolutePath());
    const QString whole = path.isEmpty() ? QStringLiteral("No map file chosen")
                                         : QStringLiteral("Map file: %1\nFolder: %2").arg(m_name, m_folder);
    setToolTip(path.isEmpty() ? QString() : QDir::toNativeSeparators(chosen.absoluteFilePath()));
    setAccessibleName(whole);
    showFitted();
}

void ChosenMapLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    showFitted();
}

void ChosenMapLabel::showFitted()
{
    if (m_name.isEmpty()) {
        setText(QStringLiteral("No map file chosen"));
        return;
    }
    const QFontMetrics metrics = fontMetrics();
    const int room = contentsRect().width();
    const QString nameCaption = QStringLiteral("Map file: "), folderCaption = QStringLiteral("Folder: ");
    setText(nameCaption + metrics.elidedText(m_name, Qt::ElideRight, room - metrics.horizontalAdvance(nameCaption)) +
            u'\n' + folderCaption +
            metrics.elidedText(m_folder, Qt::ElideMiddle, room - metrics.horizontalAdvance(folderCaption)));
}
