// The application folder of a program: the folder of the program file, or, where the program is
// installed for all users, one of the user's own, made from the files that were installed with it.
// Raises OperationError where a file can't be written.
#pragma once

#include <QString>

namespace guanchao {

// 界面.ini in it: how the windows lay, and what the user has chosen in them.
inline const QString interfaceIni = QStringLiteral("界面.ini");

class ApplicationFolder {
public:
    // `programFolder` is where the program file itself lies, not a link to it; `userData` is where
    // the user's programs keep their data.
    ApplicationFolder(const QString& programFolder, const QString& userData);

    // Ends in one separator.
    const QString& path() const { return path_; }

    // Gives the user's own folder what it lacks: files, links to the programs. What the user's data
    // lies in is never overwritten; files that belong to the program follow the installed ones.
    // Does nothing to the folder of a program that isn't installed.
    void prepare() const;

private:
    void copyFiles() const;
    void linkPrograms() const;

    QString programFolder_;
    QString installedFiles_;  // empty: the program isn't installed
    QString path_;
};

// The application folder of this process, ready for use.
QString preparedApplicationFolder();

}  // namespace guanchao
