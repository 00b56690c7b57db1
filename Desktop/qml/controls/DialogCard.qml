import QtQuick
import Anadrome

// What dialogs look like: a title, one sentence, the choices under each other. The first choice is the one
// that stands out and has the keyboard.
FocusScope {
    id: dialog

    property string title
    property string message
    property list<string> choices

    signal chosen(int index)

    focus: true
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title
    Accessible.description: message

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
                text: dialog.title
                font.pixelSize: Theme.headSize
                font.weight: Font.DemiBold
            }
            Label {
                width: parent.width
                text: dialog.message
                color: Theme.secondary
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            }
            Repeater {
                model: dialog.choices
                PushButton {
                    required property int index
                    readonly property bool isFirst: index === 0
                    required property string modelData
                    objectName: "choice" + index
                    width: column.width
                    text: modelData
                    focus: isFirst
                    fill: isFirst ? Theme.primary : Theme.surface
                    hoveredFill: isFirst ? Qt.lighter(Theme.primary, 1.12) : Theme.hovered
                    ink: isFirst ? Theme.primaryInk : Theme.text
                    edge: isFirst ? "transparent" : Theme.line
                    onClicked: dialog.chosen(index)
                }
            }
        }
    }
}
