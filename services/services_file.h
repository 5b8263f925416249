// services.ini of the application folder, and the services that it names: what changes in the file
// through the program is asked from then on.
#pragma once

#include "services/services.h"

namespace guanchao {

class ServicesFile {
public:
    // `services` is what readServices() has read from the file at `path`.
    ServicesFile(QString path, Services& services);

    // Whether nobody has changed a word of what an earlier program brought along.
    bool isFormerStandard() const;

    // The standard of today takes its place; the former file stays beside it, as services.ini.以前.
    // Raises OperationError, and then nothing has changed.
    void takeStandard();

private:
    QString path_;
    Services& services_;
};

}  // namespace guanchao
