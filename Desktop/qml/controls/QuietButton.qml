import QtQuick
import Anadrome

PushButton {
    fill: Theme.surface
    edge: Theme.line
}
