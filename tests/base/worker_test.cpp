// Jobs in real threads, awaited by this one.
#include "base/worker.h"

#include <QScopeGuard>
#include <QSemaphore>
#include <QThread>
#include <memory>

#include "base/activity.h"
#include "base/runs.h"
#include "tests/support/fakes.h"

namespace guanchao {

class WorkerTest : public ::testing::Test {
protected:
    using Job = std::function<int(Work<int>&)>;

    ~WorkerTest() override { QThreadPool::globalInstance()->waitForDone(); }

    void start(const Job& job) {
        runs_->start([this, job](std::stop_token stop) { return carryOut(job, stop); });
    }
    QCoro::Task<> carryOut(Job job, std::stop_token stop) {
        const std::function<void(const int&)> show = [this](int progress) {
            EXPECT_EQ(QThread::currentThread(), here_);
            shown_ << progress;
        };
        try {
            const std::optional<int> given =
                co_await inWorker<int>(job, show, wanted_.get_token(), stop);
            notes_ << (given ? QString::number(*given) : u"stopped"_s);
        } catch (const OperationError& failure) {
            notes_ << failure.activity() + failure.reason();
        }
    }
    void waitForItsEnd() {
        until([this] { return !runs_->running(); });
    }

    QThread* here_ = QThread::currentThread();
    QList<int> shown_;
    QStringList notes_;
    std::stop_source wanted_;
    FakeFailures failures_;
    std::unique_ptr<Runs> runs_ = std::make_unique<Runs>(failures_);
};

TEST_F(WorkerTest, TellsHowFarItIsAndGivesWhatItHasDone) {
    start([this](Work<int>& work) {
        EXPECT_NE(QThread::currentThread(), here_);
        work.tell(1);
        work.tell(2);
        return 7;
    });
    waitForItsEnd();
    EXPECT_EQ(shown_.last(), 2) << "the last word is shown";
    EXPECT_EQ(notes_, QStringList{u"7"_s});
}

TEST_F(WorkerTest, ItsFailureIsToldWithWhatItDid) {
    start([](Work<int>&) -> int {
        const Activity activity(u"导入主题"_s);
        throw OperationError(u"盘满"_s);
    });
    waitForItsEnd();
    EXPECT_EQ(notes_, QStringList{u"导入主题盘满"_s});
}

TEST_F(WorkerTest, TheUserStopsItAndKnowsThatItHasEnded) {
    QSemaphore asked;
    bool ended = false;
    start([&](Work<int>& work) {
        const auto end = qScopeGuard([&] { ended = true; });
        asked.acquire();
        EXPECT_TRUE(work.isToStop());
        work.endIfAbandoned();
        work.endIfStopped();
        return 7;
    });
    wanted_.request_stop();
    EXPECT_TRUE(runs_->running());
    asked.release();
    waitForItsEnd();
    EXPECT_TRUE(ended);
    EXPECT_EQ(notes_, QStringList{u"stopped"_s});
}

TEST_F(WorkerTest, AnOwnerThatGoesWaitsForNothing) {
    QSemaphore gone;
    QSemaphore ended;
    start([&](Work<int>& work) {
        const auto end = qScopeGuard([&] { ended.release(); });
        gone.acquire();
        work.tell(1);
        work.endIfAbandoned();
        return 7;
    });
    runs_.reset();
    gone.release();
    ended.acquire();
    QCoreApplication::processEvents();
    EXPECT_EQ(notes_, QStringList());
    EXPECT_EQ(shown_, QList<int>());
    EXPECT_EQ(failures_.texts, QStringList());
}

}  // namespace guanchao
