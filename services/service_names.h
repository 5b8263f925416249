// What the user calls what services.ini names.
#pragma once

#include <QString>

#include "platform/service.h"

namespace guanchao {

// 行情 for quote; the word itself for a purpose that there isn't.
QString purposeName(const QString& purpose);

// 新浪 for sina; empty for a service without kinds.
QString kindName(const QString& kind);

// The name of its kind; the host for one whose kind tells nothing of whose it is.
QString serviceName(const Service& service);

// What there is to say of a service, behind its kind and host.
QString lineOn(const Service& service, const QString& words);

}  // namespace guanchao
