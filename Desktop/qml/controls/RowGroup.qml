import QtQuick
import Anadrome

// Rows of a list that belong together, on one card. Rows are maps with "text" and "symbol".
Card {
    id: group

    required property var rows
    signal chosen(var row)

    width: parent ? parent.width : implicitWidth
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
                width: column.width
                implicitHeight: 52
                radius: Theme.cardRadius
                text: modelData.text
                onClicked: group.chosen(modelData)
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
                        anchors { left: sign.right; leftMargin: Theme.gap; right: parent.right
                                  rightMargin: Theme.gap; verticalCenter: parent.verticalCenter }
                        text: row.text
                        wrapMode: Text.NoWrap
                        elide: Text.ElideRight
                    }
                    Rectangle {
                        anchors { left: sign.right; leftMargin: Theme.gap; right: parent.right; top: parent.top }
                        height: 1
                        color: Theme.line
                        visible: row.index > 0
                    }
                }
            }
        }
    }
}
