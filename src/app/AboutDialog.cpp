#include "AboutDialog.h"

#include "MessageSink.h"
#include "OkButton.h"
#include "Version.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

AboutDialog::AboutDialog(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("About ") + applicationTitle());

    auto *title = new QLabel(applicationTitle() + QStringLiteral(" for Stars!"));
    QFont titleFont = title->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.5);
    title->setFont(titleFont);
    title->setAlignment(Qt::AlignCenter);

    m_version = new QLabel(versionText());
    m_version->setObjectName(QStringLiteral("lblVersion"));
    m_version->setAlignment(Qt::AlignCenter);

    QDialogButtonBox *buttons = okButtonBox(this);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(m_version);
    layout->addSpacing(12);
    layout->addWidget(buttons, 0, Qt::AlignCenter);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QString AboutDialog::versionText()
{
    return QStringLiteral("Version %1.%2.%3").arg(VELTRO_VERSION_MAJOR).arg(VELTRO_VERSION_MINOR).arg(VELTRO_VERSION_PATCH);
}
