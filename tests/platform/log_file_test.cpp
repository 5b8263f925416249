#include "platform/log_file.h"

#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <thread>
#include <vector>

#include "base/run_note.h"
#include "tests/support/fakes.h"
#include "tests/support/files.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

class LogFileTest : public ::testing::Test {
protected:
    QStringList lines(const QString& path) const {
        return QString::fromUtf8(contentOf(path)).split(u'\n', Qt::SkipEmptyParts);
    }
    static void fail(const QString& words) {
        writeLog({LogKind::failure, u"更新行情数据"_s, words});
    }

    QTemporaryDir directory_;
    FakeClock clock_;
    const QString path_ = directory_.filePath(u"运行日志.log"_s);
    const QString former_ = directory_.filePath(u"运行日志.以前.log"_s);
};

TEST_F(LogFileTest, ALineTellsWhenWhatAndHowLong) {
    {
        const LogFile log(path_, clock_);
        writeLog({LogKind::run, u"补全\t历史"_s, u"结束\n了"_s, std::chrono::milliseconds(12345)});
        writeLog({LogKind::service, u"导入"_s, u"新浪“秘密” http://a:b@host/secret"_s});
        qWarning("QObject: a warning of the toolkit's");
        qCritical("QThread: a fault");
    }
    fail(u"nobody keeps it"_s);
    EXPECT_EQ(lines(path_),
              (QStringList{u"2026-11-24 10:00:00\t运行\t补全 历史\t结束 了\t12.3 秒"_s,
                           u"2026-11-24 10:00:00\t网站\t导入\t新浪“…” http://…"_s,
                           u"2026-11-24 10:00:00\tQt\t界面库报错\tQThread: a fault"_s}));
    EXPECT_EQ(QFile::permissions(path_) & (QFile::ReadOther | QFile::ReadGroup),
              QFile::Permissions());
}

TEST_F(LogFileTest, WhatComesAgainIsCountedAndARunIsToldEachTime) {
    {
        const LogFile log(path_, clock_);
        for (int i = 0; i < 5; ++i) {
            fail(u"没有应答"_s);
            fail(u"已损坏"_s);
        }
        clock_.moveOn(std::chrono::minutes(11));
        fail(u"没有应答"_s);
        { const RunNote stands(u"导出数据"_s, {}); }
    }
    const QString day = u"2026-11-24 10:"_s;
    EXPECT_EQ(lines(path_),
              (QStringList{day + u"00:00\t失败\t更新行情数据\t没有应答"_s,
                           day + u"00:00\t失败\t更新行情数据\t已损坏"_s,
                           day + u"11:00\t失败\t更新行情数据\t没有应答\t此前还有 4 次"_s,
                           day + u"11:00\t运行\t导出数据\t开始"_s,
                           day + u"11:00\t运行\t导出数据\t没有完成\t0.0 秒"_s,
                           day + u"11:00\t失败\t更新行情数据\t已损坏\t此后又有 4 次"_s}));
}

TEST_F(LogFileTest, WhatFailsEachMinuteOfADayIsToldAFewTimes) {
    const LogFile log(path_, clock_);
    for (int minute = 0; minute < 24 * 60; ++minute, clock_.moveOn(std::chrono::minutes(1))) {
        fail(u"没有应答"_s);
    }
    QStringList times;
    for (const QString& it : lines(path_)) {
        times << it.mid(11, 5) + it.section(u'\t', 4, 4);
    }
    EXPECT_EQ(times, (QStringList{u"10:00"_s, u"10:10此前还有 9 次"_s, u"10:30此前还有 19 次"_s,
                                  u"11:10此前还有 39 次"_s, u"12:30此前还有 79 次"_s,
                                  u"15:10此前还有 159 次"_s, u"20:30此前还有 319 次"_s,
                                  u"02:30此前还有 359 次"_s, u"08:30此前还有 359 次"_s}));
}

TEST_F(LogFileTest, ARunTellsHowItEnded) {
    const LogFile log(path_, clock_);
    std::stop_source source;
    { RunNote(u"甲 乙"_s, source.get_token()).ended(u"3 / 4，主题“秘密”"_s); }
    { RunNote(u"甲"_s, source.get_token()).ended({}, true); }
    source.request_stop();
    { const RunNote closed(u"甲"_s, source.get_token()); }
    const QStringList ends =
        textsOf(lines(path_), [](const QString& it) { return it.section(u'\t', 2, 3); });
    EXPECT_EQ(ends, (QStringList{u"甲 …\t开始"_s, u"甲 …\t结束：3 / 4，主题“…”"_s, u"甲\t开始"_s,
                                 u"甲\t停止"_s, u"甲\t开始"_s, u"甲\t停止"_s}));
}

TEST_F(LogFileTest, AFullFileMakesPlaceForAnother) {
    constexpr qint64 most = 8000;
    {
        const LogFile log(path_, clock_, most);
        for (int i = 0; i < 200; ++i) {
            fail(QString::number(i));
        }
    }
    const QStringList all = lines(former_) + lines(path_);
    EXPECT_EQ(lastLines(path_, {LogKind::failure}, 200), all);
    EXPECT_EQ(lastLines(path_, {LogKind::run}, 5), QStringList());
    for (int i = 0; i < 3; ++i) {
        const LogFile log(path_, clock_, QFileInfo(path_).size());
        fail(u"再来 %1"_s.arg(i));
    }
    EXPECT_LE(QFileInfo(former_).size() + QFileInfo(path_).size(), 2 * most) << "one is kept";
}

// The program and its collector, each of them twice with two threads, and all at a full file.
TEST_F(LogFileTest, ProcessesAndThreadsThatWriteAtOnceLoseNoLine) {
    constexpr qint64 most = 1500;
    constexpr int each = 20;
    for (int round = 0; round < 50; ++round) {
        const QTemporaryDir folder;
        const QString paths[] = {folder.filePath(logOfProgram), folder.filePath(logOfCollector)};
        std::vector<pid_t> children;
        for (int child = 0; child < 4; ++child) {
            children.push_back(fork());
            if (children.back() == 0) {
                const LogFile log(paths[child % 2], clock_, most);
                const auto write = [child](int from) {
                    for (int i = from; i < each; i += 2) {
                        fail(u"%1 %2"_s.arg(child).arg(i));
                    }
                };
                std::thread other(write, 1);
                write(0);
                other.join();
                _exit(0);
            }
        }
        for (const pid_t it : children) {
            waitpid(it, nullptr, 0);
        }
        for (const QString& it : paths) {
            const QString former = it.chopped(4) + u".以前.log"_s;
            QStringList all = lines(former) + lines(it);
            ASSERT_EQ(all.removeDuplicates(), 0);
            ASSERT_EQ(all.size(), 2 * each) << round;
            ASSERT_LE(std::max(QFileInfo(it).size(), QFileInfo(former).size()), most);
        }
    }
}

TEST_F(LogFileTest, ABrokenLineEndsBeforeTheNextAndWhatCantBeWrittenIsNobodysTrouble) {
    writeFile(path_, "half a li");
    {
        const LogFile log(path_, clock_);
        fail(u"甲"_s);
    }
    EXPECT_EQ(lines(path_).size(), 2);
    for (const QString& it : {directory_.filePath(u"没有/运行日志.log"_s), directory_.path()}) {
        const LogFile log(it, clock_);
        EXPECT_NO_THROW(fail(u"乙"_s));
    }
    const QStringList unwritten = unwrittenLines({LogKind::failure}, 10);
    EXPECT_EQ(unwritten.filter(u"乙"_s).size(), 2);
    EXPECT_EQ(unwritten.filter(u"甲"_s).size(), 0);
    EXPECT_EQ(unwrittenLines({LogKind::run}, 10), QStringList());
}

}  // namespace guanchao
