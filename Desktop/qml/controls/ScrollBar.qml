import QtQuick
import QtQuick.Templates as T
import Anadrome

// How much of a list is seen, and where; it can be taken by hand.
T.ScrollBar {
    id: bar

    padding: 2
    implicitWidth: implicitContentWidth + 2 * padding
    minimumSize: 0.1
    visible: size < 1

    contentItem: Rectangle {
        implicitWidth: 4
        radius: width / 2
        color: Theme.groove
        opacity: bar.hovered || bar.pressed ? 1 : 0.7
    }
}
