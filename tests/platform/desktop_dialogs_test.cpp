#include "platform/desktop/desktop_dialogs.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QWindow>
#include <memory>

#include "base/runs.h"
#include "tests/support/fakes.h"
#include "tests/support/files.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_windows.h"

namespace guanchao {

// Real boxes on the offscreen platform; what a user does to one is done from its own event loop.
class DesktopDialogsTest : public ::testing::Test {
protected:
    template <typename Box>
    static void onceOpen(std::function<void(Box&)> act) {
        QTimer::singleShot(0, [act] {
            auto* box = qobject_cast<Box*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            act(*box);
        });
    }

    static void press(QMessageBox& box, const QList<Qt::Key>& keys) {
        for (const Qt::Key key : keys) {
            QTest::keyClick(box.windowHandle(), key);
        }
    }
    static QMessageBox* standing() {
        return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    }

    DesktopDialogs dialogs_;
};

TEST_F(DesktopDialogsTest, OnlyOkIsYesAndWhatStandsThereIsAddedToUnlessTheUserSaysMore) {
    const std::pair<QList<Qt::Key>, bool> cases[] = {
        {{Qt::Key_Return}, true}, {{Qt::Key_Escape}, false}, {{}, false}};
    for (const auto& [keys, yes] : cases) {
        onceOpen<QMessageBox>([&keys = keys](QMessageBox& box) {
            EXPECT_EQ(box.windowTitle() + u'|' + box.text(), u"观潮台|真的?"_s);
            EXPECT_EQ(box.buttons().at(0)->text() + box.buttons().at(1)->text(), u"确定取消"_s);
            press(box, keys);
            if (keys.isEmpty()) {
                box.close();
            }
        });
        EXPECT_EQ(QCoro::waitFor(dialogs_.ask({}, u"真的?"_s, u"观潮台"_s)), yes);
    }
    // Tab goes to the next button.
    const std::pair<QList<Qt::Key>, Existing> choices[] = {
        {{Qt::Key_Return}, Existing::add},
        {{Qt::Key_Tab, Qt::Key_Space}, Existing::replace},
        {{Qt::Key_Escape}, Existing::leave},
    };
    for (const auto& [keys, answer] : choices) {
        onceOpen<QMessageBox>([&keys = keys](QMessageBox& box) { press(box, keys); });
        EXPECT_EQ(QCoro::waitFor(dialogs_.askToReplace({}, u"有了"_s, u"观潮台"_s)), answer);
    }
}

TEST_F(DesktopDialogsTest, ALongTextScrollsAndOneWithoutEndIsCut) {
    const QString endless = u"<b>题</b>"_s + QString(4'000'000, u'名');
    for (const QString& words : {u"600000,"_s.repeated(300), endless}) {
        dialogs_.tell(words, words);
        const QString text = standing()->findChild<QPlainTextEdit*>()->toPlainText();
        EXPECT_TRUE(text == words || text == words.left(text.size() - 1) + u'…');
        EXPECT_LE(text.size(), 20000);
        EXPECT_LT(standing()->width(), 900);
        EXPECT_EQ(standing()->windowTitle().size(), 200);
        standing()->close();
    }
    onceOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_LE(box.height(), box.screen()->availableSize().height());
        QTest::keyClick(box.windowHandle(), Qt::Key_Return);
    });
    EXPECT_TRUE(QCoro::waitFor(dialogs_.ask({}, u"行\n"_s.repeated(100) + u"要吗?"_s, u"问"_s)));
    dialogs_.tellFailure(endless);
    dialogs_.tellFailure(endless);
    EXPECT_LT(shownWindows<QMessageBox>().first()->text().size(), 2100);
    shownWindows<QMessageBox>().first()->close();
}

TEST_F(DesktopDialogsTest, AnswersAreReadOneAfterTheOtherAndOutliveTheWindowBelow) {
    dialogs_.tell(u"一"_s, u"观潮台"_s);
    dialogs_.tell(u"二"_s, u"观潮台"_s);
    for (const QString& text : {u"一"_s, u"二"_s}) {
        EXPECT_EQ(standing()->text(), text);
        EXPECT_EQ(standing()->icon(), QMessageBox::Warning);
        EXPECT_EQ(standing()->windowModality(), Qt::ApplicationModal);
        QTest::keyClick(standing(), Qt::Key_Return);
    }
    EXPECT_FALSE(standing());
    // Rules tell what they have done, and then their window closes.
    auto owner = std::make_unique<QWidget>();
    owner->show();
    owner->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(owner.get()));
    dialogs_.tell(u"完成"_s, u"观潮台"_s);
    EXPECT_EQ(standing()->windowHandle()->transientParent(), owner->windowHandle());
    owner.reset();
    EXPECT_TRUE(standing());
}

TEST_F(DesktopDialogsTest, FailuresAreCountedInOneBox) {
    const auto boxes = [] { return shownWindows<QMessageBox>(); };
    for (const QString& text : {u"甲"_s, u"乙"_s, u"丙"_s}) {
        dialogs_.tellFailure(text);
    }
    ASSERT_EQ(boxes().size(), 1);
    EXPECT_EQ(boxes()[0]->text(), u"甲\n\n此后又有 2 次失败，最近一次：\n丙"_s);
    EXPECT_FALSE(boxes()[0]->isModal()) << "the windows beside it can be used";
    boxes()[0]->close();
    dialogs_.tellFailure(u"丁"_s);
    ASSERT_EQ(boxes().size(), 1);
    EXPECT_EQ(boxes()[0]->text(), u"丁"_s) << "what was read is not counted";
}

TEST_F(DesktopDialogsTest, AnInputBoxGivesTheTextOrNothing) {
    for (const bool accepted : {true, false}) {
        onceOpen<QInputDialog>([&](QInputDialog& box) {
            EXPECT_EQ(box.findChild<QLineEdit*>()->selectedText(), u"SH6"_s);
            QTest::keyClicks(box.findChild<QLineEdit*>(), u"SZ0"_s);
            QTest::keyClick(&box, accepted ? Qt::Key_Return : Qt::Key_Escape);
        });
        EXPECT_EQ(QCoro::waitFor(dialogs_.input({}, u"问"_s, u"题"_s, u"SH6"_s)),
                  accepted ? u"SZ0"_s : QString());
    }
}

TEST_F(DesktopDialogsTest, AFileIsPicked) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"股.mp3"_s);
    writeFile(path);
    onceOpen<QFileDialog>([&](QFileDialog& box) {
        EXPECT_EQ(box.labelText(QFileDialog::Reject), u"取消"_s) << "the toolkit's own words";
        box.selectFile(path);
        static_cast<QDialog&>(box).accept();
    });
    EXPECT_EQ(QCoro::waitFor(dialogs_.dakaiwenjian({}, u"请选择"_s, folder.path(), u"a"_s)), path);
}

TEST_F(DesktopDialogsTest, AFolderIsPickedByItselfOrByAFileInIt) {
    const QTemporaryDir place;
    const QString folder = place.filePath(u"旧"_s);
    writeFile(folder + u"/a.mzdat"_s);
    const struct {
        QString typed, picked;
    } cases[] = {{folder, folder},
                 {u"旧"_s, folder},
                 {folder + u"/a.mzdat"_s, folder},
                 {{}, place.path()},
                 {u"没有"_s, QString()}};
    for (const auto& it : cases) {
        onceOpen<QFileDialog>([&](QFileDialog& box) {
            box.findChild<QLineEdit*>()->setText(it.typed);
            auto* choose = box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
            EXPECT_EQ(choose->isEnabled(), !it.picked.isEmpty()) << it.typed.toStdString();
            it.picked.isEmpty() ? box.reject() : choose->click();
        });
        EXPECT_EQ(QCoro::waitFor(dialogs_.pickFolder({}, u"请选择"_s, place.path())), it.picked);
    }
}

TEST_F(DesktopDialogsTest, ASavedNameGetsTheSuffixOfItsFilter) {
    const QTemporaryDir folder;
    const std::tuple<int, QString, QString> cases[] = {{0, u"a"_s, u"/a.txt"_s},
                                                       {0, u"a.csv"_s, u"/a.csv"_s},
                                                       {1, u"a"_s, u"/a"_s},
                                                       {0, QString(), QString()}};
    for (const auto& [filter, typed, picked] : cases) {
        onceOpen<QFileDialog>([&filter = filter, &typed = typed](QFileDialog& box) {
            EXPECT_EQ(box.nameFilters(), QStringList({u"文本文档(*.txt)"_s, u"所有文件(*)"_s}));
            EXPECT_EQ(box.findChild<QLineEdit*>()->text(), u"股.txt"_s);
            EXPECT_FALSE(box.testOption(QFileDialog::DontConfirmOverwrite));
            box.selectNameFilter(box.nameFilters().at(filter));
            emit box.filterSelected(box.selectedNameFilter());
            box.selectFile(typed);
            QTest::keyClick(&box, typed.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
        EXPECT_EQ(QCoro::waitFor(dialogs_.baocunwenjian(
                      {}, folder.path(), u"股.txt"_s, {u"文本文档(*.txt)"_s, u"所有文件(*.*)"_s})),
                  picked.isEmpty() ? QString() : folder.path() + picked);
    }
}

TEST_F(DesktopDialogsTest, AStoppedQuestionGoesUnanswered) {
    FakeFailures failures;
    Runs runs(failures);
    bool goesOn = false;
    runs.start([&](std::stop_token stop) -> QCoro::Task<> {
        co_await dialogs_.ask(stop, u"真的?"_s, u"观潮台"_s);
        goesOn = true;
    });
    ASSERT_TRUE(standing());
    runs.stop();
    EXPECT_FALSE(standing());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(goesOn || runs.running());
}

}  // namespace guanchao
