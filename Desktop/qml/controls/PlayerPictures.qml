import QtQuick
import Anadrome

// The pictures of a player.
Pictures {
    required property PlayerItem view

    aspect: view.aspect
    onOutputReady: (sink, pixels) => view.showOn(sink, pixels)
    onOutputGone: view.leave()
}
