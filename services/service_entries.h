// The entries of services.ini, a section a service: [quote], [quote.2], ..., and how one is
// changed.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "formats/ini_text.h"
#include "platform/service.h"

namespace guanchao {

struct ServiceEntry {
    QString purpose;  // quote
    QString section;  // quote.2; of one that the file doesn't name, where it would stand
    Service service;
    bool isUsed = true;     // the user may switch it off: use=0
    bool isWritten = true;  // false: it holds because the file doesn't name its purpose
};

struct ReadEntries {
    QList<ServiceEntry> entries;  // by purpose, in the order in which they are asked
    QStringList complaints;       // of sections that were passed over, in Chinese
};

ReadEntries readEntries(const IniText& ini);

// Whether the purpose may have several services, which are asked in order.
bool hasOrder(const QString& purpose);

// Writes out what holds without being written, so that a section more changes nothing else.
void writeOut(const QList<ServiceEntry>& entries, IniText& ini);

void setUsed(const ServiceEntry& entry, bool used, IniText& ini);
void setHost(const ServiceEntry& entry, const QString& host, IniText& ini);

}  // namespace guanchao
