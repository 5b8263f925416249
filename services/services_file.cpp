#include "services/services_file.h"

#include <QFile>
#include <utility>

#include "base/files.h"
#include "services/standard_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

ServicesFile::ServicesFile(QString path, Services& services)
    : path_(std::move(path)), services_(services) {}

bool ServicesFile::isFormerStandard() const {
    return guanchao::isFormerStandard(contentOf(path_));
}

void ServicesFile::takeStandard() {
    replaceFile(path_ + u".以前"_s, contentOf(path_));
    replaceFile(path_, standardFile());
    services_ = readServices(path_);
}

}  // namespace guanchao
