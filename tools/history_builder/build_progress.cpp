#include "tools/history_builder/build_progress.h"

#include <QStringList>
#include <QTextStream>

#include "base/time_left.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 millisecondsBetween = 5000;

}  // namespace

void BuildProgress::show(qint64 bytes, qint64 ofBytes) {
    if (lastShown_.isValid() && lastShown_.elapsed() < millisecondsBetween) {
        return;
    }
    lastShown_.start();
    const auto elapsed = std::chrono::milliseconds(began_.elapsed());
    QStringList words = {u"已读 %1 行"_s.arg(rows_),
                         u"%1%"_s.arg(ofBytes > 0 ? 100 * bytes / ofBytes : 100)};
    const QString left = timeLeftWords(elapsed, bytes, ofBytes);
    if (!left.isEmpty()) {
        words << left;
    }
    QTextStream(stderr) << words.join(u"，"_s) << '\n';
}

}  // namespace guanchao
