// A job in a real thread, awaited by this one.
#include "base/worker.h"

#include <QThread>

#include "tests/support/outcome_of.h"

namespace guanchao {

TEST(WorkerTest, TellsHowFarItIsAndGivesWhatItHasDone) {
    const QThread* here = QThread::currentThread();
    QList<int> shown;
    const std::function<void(const int&)> show = [&](int progress) {
        EXPECT_EQ(QThread::currentThread(), here);
        shown << progress;
    };
    const auto job = [here](Work<int>& work) {
        EXPECT_NE(QThread::currentThread(), here);
        work.tell(1);
        work.tell(2);
        return 7;
    };
    const std::stop_token never;
    EXPECT_EQ(endOf(inWorker<int>(job, show, never, never)), 7);
    EXPECT_TRUE(shown.endsWith(2)) << "the last word is shown";
}

}  // namespace guanchao
