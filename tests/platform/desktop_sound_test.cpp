#include "platform/desktop/desktop_sound.h"

#include <QTemporaryDir>
#include <QTest>

#include "tests/support/files.h"
#include "tests/support/qt_printers.h"

namespace guanchao {

// A wave file of a tenth of a second.
static QByteArray shortSound() {
    const QByteArray samples(800, '\x80');
    return QByteArray::fromHex(
               "524946464403000057415645666d74201000000001000100401f0000401f00000100"
               "08006461746120030000") +
           samples;
}

class DesktopSoundTest : public ::testing::Test {
protected:
    DesktopSoundTest() {
        sound_.whenStopped([this] { ++told_; });
    }

    QString file(const QString& name, const QByteArray& content) {
        writeFile(folder_.filePath(name), content);
        return folder_.filePath(name);
    }

    QTemporaryDir folder_;
    int told_ = 0;
    DesktopSound sound_;
};

// With an audio device or without one.
TEST_F(DesktopSoundTest, TellsOnceWhenItHasStoppedHoweverThatCameAndNotForAnotherSound) {
    const QString good = file(u"good.wav"_s, shortSound());
    const std::tuple<const char*, QString, int> endings[] = {
        {"the end of the last round", good, 3},
        {"no such file", folder_.filePath(u"none.wav"_s), 20},
        {"no sound", file(u"text.mp3"_s, "text"), 20},
        {"a good one after a bad one", good, 1}};
    for (const auto& [name, path, count] : endings) {
        told_ = 0;
        sound_.play(path, count);
        EXPECT_EQ(told_, 0) << name;
        EXPECT_TRUE(QTest::qWaitFor([&] { return told_ > 0; }, 20000)) << name;
        sound_.stop();
        EXPECT_EQ(told_, 1) << name;
    }
    told_ = 0;
    sound_.stop();
    EXPECT_EQ(told_, 0) << "nothing plays";
    sound_.play(good, 1000);
    sound_.play(good, 1000);
    EXPECT_EQ(told_, 0);
    sound_.stop();
    EXPECT_EQ(told_, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(told_, 1);
}

}  // namespace guanchao
