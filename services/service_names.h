// What the user calls what services.ini names.
#pragma once

#include <QString>
#include <QStringList>

#include "platform/service.h"

namespace guanchao {

// Where the user chooses services, as failures name it.
inline const QString servicesWindow = QStringLiteral("“工具 / 行情来源”");

// 行情 for quote; the word itself for a purpose that there isn't.
QString purposeName(const QString& purpose);

// 新浪 for sina; empty for a service without kinds.
QString kindName(const QString& kind);

// The name of its kind; the host for one whose kind tells nothing of whose it is.
QString serviceName(const Service& service);

// 新浪（https://hq.sinajs.cn）.
QString nameAndHost(const Service& service);

// 行情 新浪 https://hq.sinajs.cn, with no more of the address than may be logged.
QString loggedName(const QString& purpose, const Service& service);

// What there is to say of a service, behind its name and host.
QString lineOn(const Service& service, const QString& words);

// Why nothing was asked where no service of the purpose is in use, and what to do.
QString allOffWords(const QString& purpose);

// Whether the words on a failure already send the user to the window of the services.
bool leadsToServices(const QString& words);

// What to do about services that have failed for these reasons, and then `later`; empty where a
// reason tells it itself.
QString adviceOn(const QStringList& reasons, const QString& later);

}  // namespace guanchao
