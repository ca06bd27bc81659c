#include "AnnotationToolBox.h"

#include "AnnotationFile.h"
#include "Colour.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

AnnotationToolBox::AnnotationToolBox(QWidget *parent) : QWidget(parent)
{
    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);

    auto *tools = new QGroupBox(QStringLiteral("Draw"), this);
    auto *toolRow = new QHBoxLayout(tools);
    auto *toolGroup = new QButtonGroup(this);
    const std::pair<const char *, const char *> toolCaptions[5] = {
        {"X", "Stop Drawing"}, {"C", "Draw a Circle"}, {"L", "Draw a Line"}, {"T", "Add text"}, {"&M", "Measure"}};
    for (int i = 0; i < 5; ++i) {
        auto *b = new QRadioButton(QString::fromLatin1(toolCaptions[i].first), tools);
        b->setObjectName(QStringLiteral("Draw%1").arg(i));
        b->setToolTip(QString::fromLatin1(toolCaptions[i].second));
        b->setAccessibleDescription(b->toolTip());
        toolGroup->addButton(b, i);
        toolRow->addWidget(b);
        m_tools[size_t(i)] = b;
    }
    // A screen reader says what the tool does, not its letter; Alt+M takes it.
    m_tools[size_t(DrawTool::Measure)]->setAccessibleName(QStringLiteral("Measure"));
    connect(toolGroup, &QButtonGroup::idToggled, this, [this](int id, bool on) {
        if (on)
            emit toolChosen(DrawTool(id));
    });
    layout->addWidget(tools, 0, 0, 1, 2);

    auto *frame = new QGroupBox(QStringLiteral("Draw Colour"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto *colourRow = new QHBoxLayout(frame);
    auto *colourGroup = new QButtonGroup(this);
    for (int i = 0; i < 7; ++i) {
        auto *b = new QRadioButton(QString::number(i + 1), frame);
        b->setObjectName(QStringLiteral("DColour%1").arg(i));
        const int32_t c = drawColour(i + 1);
        b->setStyleSheet(QStringLiteral("QRadioButton { background-color: rgb(%1, %2, %3); color: black; }")
                             .arg(redOf(c)).arg(greenOf(c)).arg(blueOf(c)));
        colourGroup->addButton(b, i);
        colourRow->addWidget(b);
        m_colours[size_t(i)] = b;
    }
    connect(colourGroup, &QButtonGroup::idToggled, this, [this](int id, bool on) {
        if (on)
            emit colourChosen(id);
    });
    layout->addWidget(frame, 1, 0, 1, 2);

    m_save = new QPushButton(QStringLiteral("Save VMK"), this);
    m_save->setObjectName(QStringLiteral("SaveVMK"));
    m_save->setToolTip(QStringLiteral("You need to save for the lines to redraw"));
    connect(m_save, &QPushButton::clicked, this, &AnnotationToolBox::saveClicked);
    m_clear = new QPushButton(QStringLiteral("Clear VMK"), this);
    m_clear->setObjectName(QStringLiteral("ClearVMK"));
    connect(m_clear, &QPushButton::clicked, this, &AnnotationToolBox::clearClicked);
    layout->addWidget(m_save, 2, 0);
    layout->addWidget(m_clear, 2, 1);

    m_plotBox = new QPlainTextEdit(this);
    m_plotBox->setObjectName(QStringLiteral("PlotBox"));
    m_plotBox->setAccessibleName(QStringLiteral("Annotation text"));
    m_plotBox->setReadOnly(true);
    m_plotBox->setLineWrapMode(QPlainTextEdit::NoWrap);
    layout->addWidget(m_plotBox, 3, 0, 1, 2);
    layout->setRowStretch(3, 1);

    m_tools[0]->setChecked(true);
    m_colours[0]->setChecked(true);
}

void AnnotationToolBox::selectTool(DrawTool tool)
{
    m_tools[size_t(tool)]->setChecked(true);
}

void AnnotationToolBox::setDrawingToolsEnabled(bool enabled)
{
    for (int i = 1; i < 4; ++i)
        m_tools[size_t(i)]->setEnabled(enabled);
}

void AnnotationToolBox::selectColour(int index)
{
    m_colours[size_t(index)]->setChecked(true);
}

void AnnotationToolBox::showText(const QString &annotationText)
{
    QString shown = annotationText;
    m_plotBox->setPlainText(shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
}
