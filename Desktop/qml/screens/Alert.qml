import QtQuick
import Anadrome

// A dialog: a title, one sentence, the choices.
FocusScope {
    id: alert

    required property AlertScreen screen

    focus: true
    Accessible.role: Accessible.AlertMessage
    Accessible.name: screen.title
    Accessible.description: screen.message
    Keys.onReturnPressed: screen.close()
    Keys.onEnterPressed: screen.close()

    Card {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.edge, 360)
        height: column.implicitHeight + 2 * Theme.edge
        color: Theme.surface

        Column {
            id: column
            x: Theme.edge
            y: Theme.edge
            width: parent.width - 2 * Theme.edge
            spacing: Theme.gap
            Label {
                width: parent.width
                text: alert.screen.title
                font.pixelSize: Theme.headSize
                font.weight: Font.DemiBold
            }
            Label {
                width: parent.width
                text: alert.screen.message
                color: Theme.secondary
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            }
            Repeater {
                model: alert.screen.actions
                PrimaryButton {
                    required property int index
                    required property string modelData
                    objectName: "choice" + index
                    width: column.width
                    height: Theme.touch
                    radius: Theme.controlRadius
                    text: modelData
                    focus: index === 0
                    onClicked: alert.screen.choose(index)
                }
            }
        }
    }
}
