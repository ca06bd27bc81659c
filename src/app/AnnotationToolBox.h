#pragma once
// The annotation controls beside the map: the tools "X" (Stop Drawing),
// "C", "L", "T" and "M" (Measure, which draws nothing), the seven draw
// colours, "Save VMK", "Clear VMK", and the annotation text as it stands.

#include "MapPointer.h"

#include <QWidget>
#include <array>

class QAbstractButton;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

class AnnotationToolBox : public QWidget {
    Q_OBJECT
public:
    explicit AnnotationToolBox(QWidget *parent = nullptr);

    void selectTool(DrawTool tool);
    void setDrawingToolsEnabled(bool enabled);
    void selectColour(int index);
    void showText(const QString &annotationText);

    QRadioButton *toolButton(DrawTool tool) const { return m_tools[size_t(tool)]; }
    QRadioButton *colourButton(int index) const { return m_colours[size_t(index)]; }
    QPushButton *saveButton() const { return m_save; }
    QPushButton *clearButton() const { return m_clear; }

signals:
    void toolChosen(DrawTool tool);
    void colourChosen(int index);
    void saveClicked();
    void clearClicked();

private:
    std::array<QRadioButton *, 5> m_tools{};
    std::array<QRadioButton *, 7> m_colours{};
    QPushButton *m_save = nullptr;
    QPushButton *m_clear = nullptr;
    QPlainTextEdit *m_plotBox = nullptr;
};
