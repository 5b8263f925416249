#include "services/standard_file.h"

#include <QCryptographicHash>
#include <algorithm>

namespace guanchao {

namespace {

// SHA-256, the oldest first. The file of today comes to them when it changes.
constexpr const char* formerFiles[] = {
    "41459631088723e7f0db7c2398d8a2eba8542f2c35883a5e39030e31ae99a095",
    "3ac24a18da867b767931974c125a91601e7aa457845b1af4ae9ae29730268f5a",
    "f588ee63eafdc5e095893aa1ab0c20a485f15007bee5d1651a67e7a80d9068cb",
    "d5ac0a4aeb18d6c82e13da38c7fad5b9193e1ff0a178f8c23270bab5ca1337fe"};

}  // namespace

bool isFormerStandard(const QByteArray& bytes) {
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    return std::ranges::any_of(formerFiles, [&](const char* it) { return hash == it; });
}

}  // namespace guanchao
