#include "services/standard_file.h"

#include <QCryptographicHash>
#include <QFile>
#include <algorithm>

// A resource of a static library has to be asked for, from outside every namespace.
static void initStandardFile() {
    Q_INIT_RESOURCE(standard_file);
}

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// SHA-256, the oldest first. The file of today comes to them when it changes.
constexpr const char* formerFiles[] = {
    "41459631088723e7f0db7c2398d8a2eba8542f2c35883a5e39030e31ae99a095",
    "3ac24a18da867b767931974c125a91601e7aa457845b1af4ae9ae29730268f5a",
    "f588ee63eafdc5e095893aa1ab0c20a485f15007bee5d1651a67e7a80d9068cb",
    "d5ac0a4aeb18d6c82e13da38c7fad5b9193e1ff0a178f8c23270bab5ca1337fe",
    "536da829ef9c7d8227b0fd33d8019e55da3c6881fd948fce19668f84ea6429a8",
    "bfddd79666637e191aa82ff2087c20fa6aa9a0a6f4ebaccf3f16b3d7167b8d9d"};

}  // namespace

bool isFormerStandard(const QByteArray& bytes) {
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    return std::ranges::any_of(formerFiles, [&](const char* it) { return hash == it; });
}

QByteArray standardFile() {
    initStandardFile();
    QFile file(u":/data/services.ini"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace guanchao
