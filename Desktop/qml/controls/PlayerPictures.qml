import QtQuick
import Anadrome

// The pictures of a player.
Pictures {
    required property PlayerItem view

    aspect: view.aspect
    onJoined: (sink, pixels) => view.showOn(sink, pixels)
    onLeft: view.leave()
}
