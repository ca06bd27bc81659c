#pragma once
// The folder a web map is written to, filled beside its final place and
// put there whole: a reader of the old map (or a web server serving it)
// never sees half of the new one, and a run that fails leaves the old one
// as it was and nothing of its own.

#include <QString>
#include <stdexcept>

// A web map that cannot be written; the message names the folder or file.
struct WebMapError : std::runtime_error {
    explicit WebMapError(const QString &message) : std::runtime_error(message.toStdString()), message(message) {}
    QString message;
};

class WebMapFolder {
public:
    // Makes the folder to write in, beside `target`. WebMapError when
    // `target` is a file, or a folder that holds anything but a web map
    // written earlier, or when the folder cannot be made.
    explicit WebMapFolder(const QString &target);
    // Removes what was written unless it was put in place.
    ~WebMapFolder();
    WebMapFolder(const WebMapFolder &) = delete;
    WebMapFolder &operator=(const WebMapFolder &) = delete;

    // Where to write now.
    const QString &path() const { return m_staging; }
    // Puts the written folder at `target`, in place of an earlier web map.
    void commit();

    // WebMapError unless `target` is free to write a web map to: nothing
    // there yet, an empty folder, or a folder with a web map in it.
    static void checkTarget(const QString &target);

private:
    QString m_target;
    QString m_staging;
    bool m_committed = false;
};
