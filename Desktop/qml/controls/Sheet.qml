import QtQuick
import Anadrome

// Something over the screens: from below in narrow windows, a card in the middle of wide ones.
FocusScope {
    id: sheet

    property string title
    default property alias content: inside.data
    readonly property bool isWide: width >= Theme.wideFrom

    signal closed

    focus: true

    Rectangle {
        id: card
        readonly property real most: sheet.height - 2 * Theme.edge
        anchors.horizontalCenter: parent.horizontalCenter
        width: sheet.isWide ? 480 : sheet.width
        height: Math.min(most, head.height + inside.implicitHeight + Theme.edge
                         + (sheet.isWide ? 0 : Theme.cardRadius))
        y: sheet.isWide ? (sheet.height - height) / 2 : sheet.height - height + Theme.cardRadius + slide
        radius: Theme.cardRadius
        color: Theme.background
        border.width: 1
        border.color: Theme.line

        property real slide: 60
        NumberAnimation on slide { to: 0; duration: Theme.move; easing.type: Easing.OutCubic }

        Item {
            id: head
            width: parent.width
            height: 60
            Label {
                anchors { left: parent.left; leftMargin: Theme.edge; right: close.left; verticalCenter: parent.verticalCenter }
                text: sheet.title
                font.pixelSize: Theme.headSize
                font.weight: Font.DemiBold
                wrapMode: Text.NoWrap
                elide: Text.ElideRight
            }
            IconButton {
                id: close
                objectName: "closeButton"
                anchors { right: parent.right; rightMargin: Theme.near; verticalCenter: parent.verticalCenter }
                name: Texts.of("Close")
                symbol: "close"
                onClicked: sheet.closed()
            }
        }
        ScrollPlace {
            anchors { left: parent.left; right: parent.right; top: head.bottom; bottom: parent.bottom
                      leftMargin: Theme.gap; rightMargin: Theme.gap; bottomMargin: Theme.cardRadius }
            contentHeight: inside.implicitHeight
            clip: true
            Column {
                id: inside
                width: parent.width
                spacing: Theme.gap
            }
        }
    }
}
