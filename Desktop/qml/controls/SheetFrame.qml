import QtQuick
import Anadrome

// Something over the screens, with a title and a way out: from below in narrow windows, a card in the middle
// of wide ones.
FocusScope {
    id: frame

    property string title
    property real wideWidth: 480
    // What the inside would like to have; it gets less where the window is lower.
    property real wantedHeight: height
    default property alias inside: inside.data
    readonly property bool isWide: width >= Theme.wideFrom

    signal closed

    focus: true

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

        property real slide: 60
        NumberAnimation on slide { to: 0; duration: Theme.move; easing.type: Easing.OutCubic }

        Item {
            id: head
            width: parent.width
            height: 60
            Label {
                anchors { left: parent.left; leftMargin: Theme.edge; right: close.left
                          verticalCenter: parent.verticalCenter }
                text: frame.title
                font.pixelSize: Theme.headSize
                font.weight: Font.DemiBold
                wrapMode: Text.NoWrap
                elide: Text.ElideRight
            }
            IconButton {
                id: close
                objectName: "closeButton"
                anchors { right: parent.right; rightMargin: Theme.near
                          verticalCenter: parent.verticalCenter }
                name: Texts.of("Close")
                symbol: "close"
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
