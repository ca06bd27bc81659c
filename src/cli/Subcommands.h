#pragma once
// The subcommands of veltro-cli, one row each: a new subcommand is a new row
// and a run function that builds its own QCommandLineParser.

#include <QStringList>
#include <QStringView>
#include <span>

struct Subcommand {
    const char *name;
    // One line, for the top-level help and as the subcommand's description.
    const char *summary;
    // Draws pictures and so needs a QGuiApplication (offscreen without a display).
    bool drawsPictures;
    // Gets the whole command line, program and subcommand name included.
    int (*run)(const QStringList &arguments);
};

std::span<const Subcommand> subcommands();
// The row of that name, or null.
const Subcommand *findSubcommand(QStringView name);
