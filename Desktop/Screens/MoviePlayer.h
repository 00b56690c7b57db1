#pragma once

#include "Platform/AVFoundation/AVPlayer.h"

#include <QObject>
#include <QtQmlIntegration>

namespace anadrome::desktop {

/// The controls of a movie: operates a player, and tells how it stands. Main thread only.
class MoviePlayer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by a screen")
    Q_PROPERTY(bool playing READ isPlaying NOTIFY changed)
    /// In seconds; the duration is 0 as long as it isn't known.
    Q_PROPERTY(double position READ position NOTIFY changed)
    Q_PROPERTY(double duration READ duration NOTIFY changed)
    /// From 0 to 1.
    Q_PROPERTY(double volume READ volume WRITE setVolume NOTIFY changed)
    Q_PROPERTY(bool muted READ isMuted WRITE setMuted NOTIFY changed)

public:
    MoviePlayer(std::shared_ptr<AVPlayer> player, QObject* parent);
    ~MoviePlayer() override;

    bool isPlaying() const { return m_player->rate() != 0; }
    double position() const;
    double duration() const;
    double volume() const { return m_player->volume(); }
    void setVolume(double volume);
    bool isMuted() const { return m_player->isMuted(); }
    void setMuted(bool muted);

    /// Plays or pauses; a movie that stands at its end begins anew.
    Q_INVOKABLE void toggle();
    Q_INVOKABLE void pause();
    Q_INVOKABLE void seek(double seconds);
    /// By so many steps of the volume; what is made louder is heard.
    Q_INVOKABLE void louder(int steps);

Q_SIGNALS:
    void changed();

private:
    const std::shared_ptr<AVPlayer> m_player;
    const AVPlayer::TimeObserverToken m_observer;
};

} // namespace anadrome::desktop
