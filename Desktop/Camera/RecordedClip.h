#pragma once

#include "Desktop/Items/PlayerItem.h"
#include "Desktop/Screens/MoviePlayer.h"
#include "Platform/AVKit/AVPlayerLayerView.h"
#include "Platform/Foundation/URL.h"

namespace anadrome::desktop {

/// What the camera has recorded, while the user looks at it. Owns the file: it goes with the object. Main
/// thread only.
class RecordedClip : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the camera")
    Q_PROPERTY(anadrome::desktop::MoviePlayer* player READ player CONSTANT)
    Q_PROPERTY(anadrome::desktop::PlayerItem* pictures READ pictures CONSTANT)

public:
    /// Begins to play.
    RecordedClip(URL file, QObject* parent);
    ~RecordedClip() override;

    const URL& file() const { return m_file; }
    MoviePlayer* player() const { return m_player; }
    PlayerItem* pictures() const { return m_pictures; }

private:
    const URL m_file;
    const std::shared_ptr<AVPlayerLayerView> m_view = std::make_shared<AVPlayerLayerView>();
    PlayerItem* const m_pictures;
    MoviePlayer* m_player = nullptr;
};

} // namespace anadrome::desktop
