// services.ini of the application folder, and the services that it names: what changes in the file
// through the program is asked from the next request on. A change leaves the user's comments and
// entries as they are; the file as it was before the first one of this run of the program stays
// beside it, as services.ini.以前. In a folder for practice none comes into use that is real:
// while the file, changed by hand, names one, the program asks what it has asked. Changes raise
// OperationError, and then nothing has changed.
#pragma once

#include <functional>

#include "services/service_entries.h"
#include "services/services.h"

namespace guanchao {

class ServicesFile {
public:
    // `services` is what readServices() has read from the file at `path`.
    ServicesFile(QString path, Services& services);

    // Whether nobody has changed a word of what an earlier program brought along.
    bool isFormerStandard() const;

    // The standard of today takes its place; the former file stays as services.ini.以前.
    void takeStandard();

    // As they stand in the file now, by purpose and order.
    QList<ServiceEntry> entries() const;

    // What the program would ask by the file as it stands.
    Services inFile() const;

    // The entry, by its section, is asked before or after its neighbour. False if it has none
    // there.
    bool move(const QString& section, bool up);
    void setUsed(const QString& section, bool used);
    // `host` as the user types it: scheme, name and port.
    void setHost(const QString& section, const QString& host);

private:
    using Edit = std::function<void(const QList<ServiceEntry>& entries, IniText& ini)>;
    void change(const Edit& edit);
    void replace(const QByteArray& former, const QByteArray& content);
    void changeEntry(const QString& section,
                     const std::function<void(const ServiceEntry& entry, IniText& ini)>& edit);
    void refuseRealNewcomer() const;
    QByteArray content() const;

    QString path_;
    Services& services_;
    bool hasKeptFormer_ = false;
};

}  // namespace guanchao
