import QtQuick
import Anadrome

// The one thing to do on a screen.
PushButton {
    implicitHeight: Theme.tall
    radius: Theme.cardRadius
    fill: Theme.primary
    hoveredFill: Qt.lighter(Theme.primary, 1.12)
    ink: Theme.primaryInk
}
