import QtQuick
import Anadrome

Image {
    property string name
    property color color: Theme.text
    property int size: 24

    width: size
    height: size
    sourceSize { width: size * Screen.devicePixelRatio; height: size * Screen.devicePixelRatio }
    source: name ? "image://icons/" + name + "/" + color.toString().slice(-6) : ""
    Accessible.ignored: true
}
