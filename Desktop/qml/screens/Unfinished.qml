import QtQuick
import Anadrome

// Stands in for a screen that has no storyboard here: it can be closed.
FocusScope {
    id: unfinished

    required property ShownScreen screen

    focus: true

    Card {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.edge, 360)
        height: column.implicitHeight + 2 * Theme.edge

        Column {
            id: column
            x: Theme.edge
            y: Theme.edge
            width: parent.width - 2 * Theme.edge
            spacing: Theme.gap
            Label { width: parent.width; text: Texts.of("NotHere") }
            PrimaryButton {
                objectName: "closeButton"
                width: parent.width
                height: Theme.touch
                radius: Theme.controlRadius
                text: Texts.of("Close")
                focus: true
                onClicked: unfinished.screen.close()
            }
        }
    }
}
