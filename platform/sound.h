// Plays the alarm sound.
#pragma once

#include <QString>
#include <functional>

namespace guanchao {

class Sound {
public:
    virtual ~Sound() = default;

    // Plays the file that many times over, in place of what plays now. A file that can't be played
    // is the player's affair: no message.
    virtual void play(const QString& file, int count) = 0;
    virtual void stop() = 0;

    // Called whenever the player has stopped, by stop(), at the end or by a failure.
    virtual void whenStopped(std::function<void()> handler) = 0;
};

}  // namespace guanchao
