// From the start of the process to the first painted theme table, on the prepared stores.
#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "bench/compare.h"
#include "store/prepared_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

void startup(benchmark::State& state) {
    QTemporaryDir folder;
    prepareStores(folder.path(), QStringLiteral(GUANCHAO_SOURCE_DIR "/data"),
                  QDateTime::currentDateTime());
    const QString program = folder.filePath(u"startup_probe"_s);
    QFile::copy(QStringLiteral(GUANCHAO_STARTUP_PROBE), program);
    measure(state, [&] {
        if (QProcess::execute(program, {}) != 0) {
            state.SkipWithError("the program did not come to its first paint");
        }
    });
}
BENCHMARK(startup)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

}  // namespace

}  // namespace guanchao
