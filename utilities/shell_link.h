// The launchers of the program: desktop entries in folders of the user, named after the executable,
// with the icon pet.ico of the application folder. A second run writes over the first. Nothing is
// told, neither on success nor on failure.
#pragma once

#include <QString>

#include "platform/dialogs.h"

namespace guanchao {

// Where desktop environments look for the entries of a user; an empty one is not there.
struct LauncherFolders {
    QString desktop;
    QString programs;
    QString startup;  // what starts with the session
};

LauncherFolders userLauncherFolders();

// The numbers by which the menu entries name the folders. Here the menu of programs and the start
// menu are one.
enum class ShellFolder { desktop = 0, programs = 2, startMenu = 11, startup = 24 };

class clsShellLink {
public:
    // The executable with its path, the application folder with its separator, and what a desktop
    // calls the program.
    clsShellLink(LauncherFolders folders, QString program, QString applicationFolder,
                 QString name = programName);

    // 建快捷方式: makes the entry in that folder, and the folder if it is missing.
    void createlnk(ShellFolder number) const;

    QString folder(ShellFolder number) const;

private:
    QString entry() const;

    LauncherFolders folders_;
    QString program_;
    QString applicationFolder_;
    QString name_;
};

}  // namespace guanchao
