#include "AnnotationFile.h"

#include "Colour.h"
#include "Conversions.h"
#include "GameFolder.h"

#include <QFileInfo>
#include <stdexcept>

QString AnnotationRecord::canonical() const
{
    switch (kind) {
    case Kind::Line:
        return QStringLiteral("L,%1,%2,%3,%4,%5\r\n").arg(x1).arg(y1).arg(x2).arg(y2).arg(colour);
    case Kind::Circle:
        return QStringLiteral("C,%1,%2,%3,%4\r\n").arg(x1).arg(y1).arg(x2).arg(colour);
    case Kind::Text:
        return QStringLiteral("T,%1,%2,").arg(x1).arg(y1) + text + QStringLiteral(",%1\r\n").arg(size);
    }
    return QString();
}

int32_t AnnotationReader::readInt32()
{
    const int line = m_reader.line();
    try {
        return conv::toInt32(conv::val(m_reader.readTextItem()));
    } catch (const conv::OverflowError &) {
        m_reader.fail(QStringLiteral("Overflow: a number is out of range"), line);
    }
}

int16_t AnnotationReader::readInt16()
{
    const int line = m_reader.line();
    try {
        return conv::toInt16(conv::val(m_reader.readTextItem()));
    } catch (const conv::OverflowError &) {
        m_reader.fail(QStringLiteral("Overflow: a number is out of range"), line);
    }
}

std::optional<AnnotationRecord> AnnotationReader::next()
{
    while (!m_reader.atEnd()) {
        const QString kind = m_reader.readTextItem();
        AnnotationRecord r;
        if (kind == u"L") {
            r.kind = AnnotationRecord::Kind::Line;
            r.x1 = readInt32();
            r.y1 = readInt32();
            r.x2 = readInt32();
            r.y2 = readInt32();
            r.colour = readInt16();
            return r;
        }
        if (kind == u"C") {
            r.kind = AnnotationRecord::Kind::Circle;
            r.x1 = readInt32();
            r.y1 = readInt32();
            r.x2 = readInt32();
            r.colour = readInt16();
            return r;
        }
        if (kind == u"T") {
            r.kind = AnnotationRecord::Kind::Text;
            r.x1 = readInt32();
            r.y1 = readInt32();
            r.text = m_reader.readTextItem();
            r.size = readInt16();
            return r;
        }
    }
    return std::nullopt;
}

LoadedAnnotations loadAnnotations(const QString &path)
{
    LoadedAnnotations loaded;
    const QFileInfo info(path);
    const QString found = findFileNoCase(info.path(), info.fileName());
    if (found.isEmpty())
        return loaded;
    AnnotationReader reader(found);
    while (const auto record = reader.next()) {
        loaded.text += record->canonical();
        if (record->kind != AnnotationRecord::Kind::Text)
            loaded.lastColour = record->colour;
    }
    return loaded;
}

int32_t drawColour(int index)
{
    static constexpr int32_t colours[7] = {
        rgb(255, 255, 255), rgb(255, 0, 0), rgb(0, 255, 0), rgb(0, 0, 255),
        rgb(255, 255, 0), rgb(0, 255, 255), rgb(255, 0, 255),
    };
    if (index < 1 || index > 7)
        throw std::out_of_range(QStringLiteral("Subscript out of range: annotation colour %1 is not 1 to 7")
                                    .arg(index).toStdString());
    return colours[index - 1];
}
