#include "store/file_stamp.h"

#include <QFileInfo>

namespace guanchao {

FileStamp stampOf(const StoreFile& file) {
    const QFileInfo info(file.path);
    return {file.path, info.size(), info.lastModified()};
}

}  // namespace guanchao
