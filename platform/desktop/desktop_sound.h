// Sound by the desktop's media player, which is made when the first alarm rings: it loads slowly,
// and most sessions never need it.
#pragma once

#include <QAudioOutput>
#include <QMediaPlayer>
#include <memory>

#include "platform/sound.h"

namespace guanchao {

class DesktopSound : public Sound {
public:
    void play(const QString& file, int count) override;
    void stop() override;
    void whenStopped(std::function<void()> handler) override { stopped_ = std::move(handler); }

private:
    void makePlayer();
    void stopIfEnded();
    void tellStopped();

    std::function<void()> stopped_;  // outlives the player, which may call it at its end
    bool sounds_ = false;            // from play() until the player has stopped
    std::unique_ptr<QAudioOutput> output_;
    std::unique_ptr<QMediaPlayer> player_;
};

}  // namespace guanchao
