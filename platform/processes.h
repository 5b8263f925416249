// The processes of the system, by the name of their image.
#pragma once

#include <QString>

namespace guanchao {

class Processes {
public:
    virtual ~Processes() = default;

    // Ends every other process of the image name ("guanchaotai.exe"; the ending falls away where
    // images have none). No result: what can't be ended goes on.
    virtual void endByImageName(const QString& imageName) = 0;

    // Ends this process in order, as soon as its event loop comes to it.
    virtual void endThisProcess() = 0;
};

}  // namespace guanchao
