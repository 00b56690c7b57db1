import QtQuick
import Anadrome

// Something over the screens, with a title and a way out: from below in narrow windows, a card in the middle
// of wide ones.
FocusScope {
    id: frame

    property string title
    // What the way out says; a cross without.
    property string leaveText
    property real wideWidth: Theme.sheetWidth
    // What the inside would like to have; it gets less where the window is lower.
    property real wantedHeight: height
    default property alias inside: inside.data
    readonly property bool isWide: width >= Theme.wideFrom

    signal closed

    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: title

    // A click beside the card leaves.
    MouseArea { anchors.fill: parent; onClicked: frame.closed() }
    Rectangle {
        id: card
        readonly property real most: frame.height - 2 * Theme.edge
        anchors.horizontalCenter: parent.horizontalCenter
        width: frame.isWide ? Math.min(frame.wideWidth, frame.width - 2 * Theme.edge) : frame.width
        height: Math.min(most, head.height + frame.wantedHeight + Theme.edge
                         + (frame.isWide ? 0 : Theme.cardRadius))
        y: frame.isWide ? (frame.height - height) / 2 : frame.height - height + Theme.cardRadius + slide
        radius: Theme.cardRadius
        color: Theme.background
        border.width: 1
        border.color: Theme.line

        property real slide: Theme.sheetRise
        NumberAnimation on slide { to: 0; duration: Theme.move; easing.type: Easing.OutCubic }

        MouseArea { anchors.fill: parent }
        Item {
            id: head
            width: parent.width
            height: Theme.sheetHead
            Label {
                anchors { left: parent.left; leftMargin: Theme.edge; verticalCenter: parent.verticalCenter
                          right: frame.leaveText ? leave.left : close.left; rightMargin: Theme.near }
                text: frame.title
                font.pixelSize: Theme.headSize
                font.weight: Font.DemiBold
                wrapMode: Text.NoWrap
                elide: Text.ElideRight
            }
            IconButton {
                id: close
                objectName: "closeButton"
                visible: frame.leaveText === ""
                anchors { right: parent.right; rightMargin: Theme.near
                          verticalCenter: parent.verticalCenter }
                name: Texts.of("Close")
                symbol: "close"
                onClicked: frame.closed()
            }
            PushButton {
                id: leave
                objectName: "closeButton"
                anchors { right: parent.right; rightMargin: Theme.near
                          verticalCenter: parent.verticalCenter }
                visible: frame.leaveText !== ""
                text: frame.leaveText
                onClicked: frame.closed()
            }
        }
        Item {
            id: inside
            anchors { left: parent.left; right: parent.right; top: head.bottom; bottom: parent.bottom
                      leftMargin: Theme.gap; rightMargin: Theme.gap; bottomMargin: Theme.cardRadius }
        }
    }
}
