#pragma once

#include "Desktop/Screens/MoviePlayer.h"
#include "Desktop/Screens/ShownScreen.h"

#include <QVariantList>

namespace anadrome::desktop {

/// The finished movie.
class PreviewScreen : public ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(anadrome::desktop::MoviePlayer* player READ player CONSTANT)
    /// Where the movie runs backward and where forward, in its order: maps with "end", the part of the movie
    /// at which the stretch ends, and "backward".
    Q_PROPERTY(QVariantList stretches READ stretches CONSTANT)

public:
    PreviewScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent);

    MoviePlayer* player() const { return m_player; }
    const QVariantList& stretches() const { return m_stretches; }

private:
    MoviePlayer* m_player;
    const QVariantList m_stretches;
};

} // namespace anadrome::desktop
