#include "Desktop/Screens/MoviePlayer.h"

#include <QPointer>
#include <algorithm>

namespace anadrome::desktop {

namespace {

constexpr std::int32_t timescale = 600;

CMTime timeOf(double seconds) {
    return CMTimeMakeWithSeconds(seconds, timescale);
}

} // namespace

MoviePlayer::MoviePlayer(std::shared_ptr<AVPlayer> player, QObject* parent)
    : QObject(parent), m_player(std::move(player)),
      m_observer(m_player->addPeriodicTimeObserverForInterval(timeOf(0.05), DispatchQueue::main(),
                                                              [self = QPointer(this)](const CMTime&) {
                                                                  if (self)
                                                                      Q_EMIT self->changed();
                                                              })) {}

MoviePlayer::~MoviePlayer() {
    m_player->removeTimeObserver(m_observer);
}

double MoviePlayer::position() const {
    return CMTimeGetSeconds(m_player->currentTime());
}

double MoviePlayer::duration() const {
    const auto& item = m_player->currentItem();
    return item && CMTIME_IS_NUMERIC(item->duration()) ? CMTimeGetSeconds(item->duration()) : 0;
}

void MoviePlayer::setVolume(double volume) {
    m_player->setVolume(static_cast<float>(volume));
    Q_EMIT changed();
}

void MoviePlayer::setMuted(bool muted) {
    m_player->setMuted(muted);
    Q_EMIT changed();
}

void MoviePlayer::toggle() {
    if (isPlaying())
        return pause();
    if (duration() > 0 && position() >= duration())
        seek(0);
    m_player->play();
    Q_EMIT changed();
}

void MoviePlayer::pause() {
    m_player->pause();
    Q_EMIT changed();
}

void MoviePlayer::seek(double seconds) {
    m_player->seekToTime(timeOf(seconds), kCMTimeZero, kCMTimeZero);
    Q_EMIT changed();
}

void MoviePlayer::louder(int steps) {
    constexpr double step = 0.05;
    if (steps > 0)
        m_player->setMuted(false);
    setVolume(std::clamp(volume() + steps * step, 0.0, 1.0));
}

} // namespace anadrome::desktop
