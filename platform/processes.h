// The processes of the programs in one application folder, by the name of their image; those of
// other folders and of other users are not seen.
#pragma once

#include <QString>

namespace guanchao {

class Processes {
public:
    virtual ~Processes() = default;

    // Ends every other process of the image name ("guanchaotai.exe"; the ending falls away where
    // images have none). No result: what can't be ended goes on.
    virtual void endByImageName(const QString& imageName) = 0;

    // True if a process of the image name runs, letter case aside. What can't be looked at is taken
    // as not running.
    virtual bool isRunning(const QString& imageName) = 0;

    // Starts a program with one argument and leaves it to itself; false if it can't be started.
    virtual bool start(const QString& program, const QString& argument) = 0;

    // Ends this process in order, as soon as its event loop comes to it.
    virtual void endThisProcess() = 0;
};

}  // namespace guanchao
