#include "platform/desktop/desktop_sound.h"

#include <QFileInfo>
#include <QLibraryInfo>
#include <QUrl>
#include <utility>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Where the media library comes with both backends, the other one ends the process if there is no
// audio device. Later versions come with that one alone, mended.
void chooseBackend() {
    const QString plugin =
        QLibraryInfo::path(QLibraryInfo::PluginsPath) + u"/multimedia/libgstreamermediaplugin.so"_s;
    if (qEnvironmentVariableIsEmpty("QT_MEDIA_BACKEND") && QFileInfo::exists(plugin)) {
        qputenv("QT_MEDIA_BACKEND", "gstreamer");
    }
}

}  // namespace

void DesktopSound::makePlayer() {
    chooseBackend();
    output_ = std::make_unique<QAudioOutput>();
    player_ = std::make_unique<QMediaPlayer>();
    player_->setAudioOutput(output_.get());
    // Queued: a file that fails at once must not tell of it before play() has returned.
    const auto watch = [this](auto signal) {
        QObject::connect(
            player_.get(), signal, player_.get(), [this] { stopIfEnded(); }, Qt::QueuedConnection);
    };
    watch(&QMediaPlayer::mediaStatusChanged);
    watch(&QMediaPlayer::errorOccurred);
}

// The state by itself doesn't tell: some versions let a player that failed go on as if it played,
// and one without a backend never began.
void DesktopSound::stopIfEnded() {
    if (!player_->isAvailable() || player_->error() != QMediaPlayer::NoError ||
        player_->mediaStatus() == QMediaPlayer::EndOfMedia) {
        stop();
    }
}

void DesktopSound::tellStopped() {
    if (std::exchange(sounds_, false) && stopped_) {
        stopped_();
    }
}

void DesktopSound::play(const QString& file, int count) {
    if (!player_) {
        makePlayer();
    }
    player_->stop();
    player_->setSource(QUrl::fromLocalFile(file));
    player_->setLoops(count);
    player_->play();
    sounds_ = true;
    QMetaObject::invokeMethod(
        player_.get(), [this] { stopIfEnded(); }, Qt::QueuedConnection);
}

void DesktopSound::stop() {
    if (player_) {
        player_->stop();
    }
    tellStopped();
}

}  // namespace guanchao
