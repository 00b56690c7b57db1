#pragma once

#include "Desktop/MoviePlayer.h"
#include "Desktop/ShownScreen.h"

namespace anadrome::desktop {

/// The finished movie.
class PreviewScreen : public ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(anadrome::desktop::MoviePlayer* player READ player CONSTANT)

public:
    PreviewScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent);

    MoviePlayer* player() const { return m_player; }

private:
    MoviePlayer* m_player;
};

} // namespace anadrome::desktop
