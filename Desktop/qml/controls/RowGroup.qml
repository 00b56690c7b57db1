import QtQuick
import Anadrome

// Rows of a list that belong together, on one card. Rows are maps with "text" and "symbol".
Card {
    id: group

    required property var rows
    signal chosen(var row)

    width: parent ? parent.width : implicitWidth
    opacity: enabled ? 1 : Theme.dimmed
    height: column.implicitHeight

    Column {
        id: column
        width: parent.width
        Repeater {
            model: group.rows
            PushButton {
                id: row
                required property int index
                required property var modelData
                objectName: modelData.symbol
                readonly property bool isRow: true

                // Rows of the next group too, but nothing else.
                function leave(isForward) {
                    const next = nextItemInFocusChain(isForward)
                    if (next.isRow)
                        next.forceActiveFocus(Qt.TabFocusReason)
                }

                width: column.width
                implicitHeight: Math.max(Theme.tall, words.implicitHeight + Theme.gap)
                radius: Theme.cardRadius
                ringReach: -2
                text: modelData.text
                onClicked: group.chosen(modelData)
                Keys.onUpPressed: leave(false)
                Keys.onDownPressed: leave(true)
                contentItem: Item {
                    Icon {
                        id: sign
                        x: Theme.gap
                        anchors.verticalCenter: parent.verticalCenter
                        name: row.modelData.symbol
                        color: Theme.secondary
                        size: 22
                    }
                    Label {
                        id: words
                        anchors { left: sign.right; leftMargin: Theme.gap; right: parent.right
                                  rightMargin: Theme.gap; verticalCenter: parent.verticalCenter }
                        text: row.text
                    }
                    Rectangle {
                        anchors { left: sign.right; leftMargin: Theme.gap; right: parent.right
                                  top: parent.top }
                        height: 1
                        color: Theme.line
                        visible: row.index > 0
                    }
                }
            }
        }
    }
}
