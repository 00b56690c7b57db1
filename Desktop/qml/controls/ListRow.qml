import QtQuick
import Anadrome

// A row of a RowGroup: an icon and a text. Lines separate it from the row above.
PushButton {
    id: row

    // To the rows of the next group too, but to nothing else.
    function leave(isForward: bool) {
        const next = nextItemInFocusChain(isForward) as ListRow
        if (next)
            next.forceActiveFocus(Qt.TabFocusReason)
    }
    component Content: Item {
        id: content
        required property string symbol
        required property string text
        required property bool isSeparated
        implicitHeight: words.implicitHeight

        Icon {
            id: sign
            x: Theme.gap
            anchors.verticalCenter: parent.verticalCenter
            name: content.symbol
            color: Theme.secondary
            size: 22
        }
        Label {
            id: words
            anchors { left: sign.right; leftMargin: Theme.gap; right: parent.right; rightMargin: Theme.gap
                      verticalCenter: parent.verticalCenter }
            text: content.text
        }
        Rectangle {
            anchors { left: words.left; right: parent.right; top: parent.top }
            height: 1
            color: Theme.line
            visible: content.isSeparated
        }
    }

    objectName: symbol
    width: parent ? parent.width : implicitWidth
    implicitHeight: Math.max(Theme.tall, implicitContentHeight + Theme.gap)
    radius: Theme.cardRadius
    ringReach: -2
    Keys.onUpPressed: leave(false)
    Keys.onDownPressed: leave(true)
    contentItem: Content {
        symbol: row.symbol
        text: row.text
        isSeparated: row.y > 0
    }
}
