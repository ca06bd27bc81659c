#pragma once
// A test's settings in a folder of its own, away from the user's and from
// earlier runs. Make one before the first settings are read.

#include <QSettings>
#include <QTemporaryDir>

struct IsolatedSettings {
    QTemporaryDir dir;
    IsolatedSettings()
    {
        if (!dir.isValid())
            qFatal("no folder for the test's settings");
        for (QSettings::Scope scope : {QSettings::UserScope, QSettings::SystemScope})
            QSettings::setPath(QSettings::NativeFormat, scope, dir.path());
    }
};
