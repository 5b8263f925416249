#include "platform/desktop/desktop_sound.h"

#include <QUrl>

namespace guanchao {

void DesktopSound::makePlayer() {
    // The other backend of the media library ends the process where there is no audio device.
    if (qEnvironmentVariableIsEmpty("QT_MEDIA_BACKEND")) {
        qputenv("QT_MEDIA_BACKEND", "gstreamer");
    }
    output_ = std::make_unique<QAudioOutput>();
    player_ = std::make_unique<QMediaPlayer>();
    player_->setAudioOutput(output_.get());
    QObject::connect(player_.get(), &QMediaPlayer::playbackStateChanged, player_.get(),
                     [this] { tellIfStopped(); });
    // Queued: a file that fails at once must not tell of it before play() has returned.
    QObject::connect(
        player_.get(), &QMediaPlayer::errorOccurred, player_.get(), [this] { tellIfStopped(); },
        Qt::QueuedConnection);
}

void DesktopSound::tellIfStopped() {
    if (player_->playbackState() == QMediaPlayer::StoppedState && stopped_) {
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
}

void DesktopSound::stop() {
    if (player_) {
        player_->stop();
    }
}

}  // namespace guanchao
