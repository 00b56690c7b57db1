#include "Desktop/Camera/RecordedClip.h"

#include "Platform/Foundation/NSFileManager.h"

namespace anadrome::desktop {

RecordedClip::RecordedClip(URL file, QObject* parent)
    : QObject(parent), m_file(std::move(file)), m_pictures(new PlayerItem(m_view, this)) {
    const auto player = std::make_shared<AVPlayer>(m_file);
    m_view->layer().setPlayer(player);
    m_player = new MoviePlayer(player, this);
    m_player->toggle();
}

RecordedClip::~RecordedClip() {
    NSFileManager::defaultManager().removeItemAtPath(m_file.path());
}

} // namespace anadrome::desktop
