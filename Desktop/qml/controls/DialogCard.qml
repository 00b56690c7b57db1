pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
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

    Keys.onUpPressed: told.flick(0, Theme.scrollSpeed)
    Keys.onDownPressed: told.flick(0, -Theme.scrollSpeed)

    Card {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.edge, Theme.dialogWidth)
        height: told.height + answers.implicitHeight + 2 * Theme.edge + Theme.gap
        color: Theme.surface

        // What is told scrolls where it is too long; the answers stay in reach.
        Flickable {
            id: told
            readonly property real most: dialog.height - 4 * Theme.edge - Theme.gap - answers.implicitHeight
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.edge }
            height: Math.min(words.implicitHeight, most)
            contentHeight: words.implicitHeight
            interactive: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: ScrollBar { }
            clip: true

            Column {
                id: words
                width: parent.width
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
            }
        }
        Column {
            id: answers
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Theme.edge }
            spacing: Theme.gap
            Repeater {
                model: dialog.choices
                PushButton {
                    required property int index
                    readonly property bool isFirst: index === 0
                    required property string modelData
                    objectName: "choice" + index
                    width: answers.width
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
