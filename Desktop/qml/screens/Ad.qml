import QtQuick
import Anadrome

// A full-screen ad, labelled as one. Its close button has one place, and waits there until it may be used.
FocusScope {
    id: ad

    required property AdScreen screen

    component Content: Item {
        id: content
        required property string text
        required property url picture

        Image {
            id: picture
            anchors { left: parent.left; right: parent.right; top: parent.top; bottom: words.top
                      bottomMargin: words.text ? Theme.gap : 0 }
            source: content.picture
            // Never larger than it was made.
            readonly property bool fits: sourceSize.width <= width && sourceSize.height <= height
            fillMode: fits ? Image.Pad : Image.PreserveAspectFit
            mipmap: true
        }
        Label {
            id: words
            anchors { left: parent.left; right: parent.right
                      bottom: parent.bottom; bottomMargin: Theme.gap }
            text: content.text
            font.pixelSize: Theme.headSize
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 6
            elide: Text.ElideRight
        }
    }

    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: Texts.of("Ad")
    Accessible.description: screen.text

    Rectangle { anchors.fill: parent; color: Theme.background }

    Item {
        id: bar
        width: parent.width
        height: Theme.sheetHead
        Rectangle {
            anchors { left: parent.left; leftMargin: Theme.edge; verticalCenter: parent.verticalCenter }
            width: mark.implicitWidth + Theme.gap
            height: mark.implicitHeight + Theme.near
            radius: Theme.controlRadius
            color: Theme.well
            Label {
                id: mark
                anchors.centerIn: parent
                text: Texts.of("Ad")
                color: Theme.secondary
                font.pixelSize: Theme.smallSize
                font.weight: Font.DemiBold
            }
        }
        Item {
            id: corner
            anchors { right: parent.right; rightMargin: Theme.near; verticalCenter: parent.verticalCenter }
            width: Theme.touch
            height: Theme.touch
            Label {
                anchors.centerIn: parent
                visible: !close.visible
                text: ad.screen.secondsLeft
                color: Theme.secondary
                Accessible.name: Texts.of("AdClosesIn").replace("%1", ad.screen.secondsLeft)
            }
            IconButton {
                id: close
                objectName: "closeButton"
                anchors.fill: parent
                visible: ad.screen.secondsLeft === 0
                name: Texts.of("Close")
                symbol: "close"
                onVisibleChanged: if (visible) forceActiveFocus()
                onClicked: ad.screen.close()
            }
        }
    }
    PushButton {
        objectName: "adButton"
        anchors { left: parent.left; right: parent.right; top: bar.bottom; bottom: parent.bottom
                  margins: Theme.edge; topMargin: 0 }
        enabled: ad.screen.leads
        text: ad.screen.text
        onClicked: ad.screen.click()
        contentItem: Content {
            text: ad.screen.text
            picture: ad.screen.picture
        }
    }
}
