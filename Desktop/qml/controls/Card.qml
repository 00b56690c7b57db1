import QtQuick
import Anadrome

Rectangle {
    radius: Theme.cardRadius
    color: Theme.surface
    border.width: 1
    border.color: Theme.line
}
