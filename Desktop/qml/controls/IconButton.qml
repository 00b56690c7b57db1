import QtQuick
import Anadrome

// A button without words; what it does is told by its name.
PushButton {
    id: button

    required property string name

    implicitWidth: Theme.touch
    text: name
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: button.symbol
            color: button.ink
        }
    }
}
