import QtQuick
import Anadrome

// An ad in its room, labelled as one; nothing where none has come.
PushButton {
    id: banner

    property BannerItem ad: null

    component Content: Item {
        id: content
        required property string text
        required property url picture

        Label {
            id: mark
            x: Theme.gap
            anchors.verticalCenter: parent.verticalCenter
            text: Texts.of("Ad")
            color: Theme.secondary
            font.pixelSize: Theme.smallSize
            font.weight: Font.DemiBold
        }
        Image {
            id: picture
            anchors { left: mark.right; leftMargin: visible ? Theme.gap : 0; top: parent.top
                      bottom: parent.bottom; margins: Theme.bannerMargin }
            // In its own shape: what it has is counted in the pixels of the screen.
            readonly property real most: parent.width * (content.text ? 0.4 : 0.85)
            width: visible ? Math.min(height * implicitWidth / implicitHeight, most) : 0
            visible: status === Image.Ready
            source: content.picture
            sourceSize.height: height * Screen.devicePixelRatio
            fillMode: Image.PreserveAspectFit
        }
        Label {
            anchors { left: picture.right; leftMargin: Theme.gap; right: parent.right; rightMargin: Theme.gap
                      verticalCenter: parent.verticalCenter }
            text: content.text
            maximumLineCount: 2
            elide: Text.ElideRight
        }
    }

    visible: ad !== null && ad.filled
    enabled: visible && ad.leads
    implicitHeight: visible ? ad.height : 0
    radius: 0
    fill: Theme.surface
    text: ad ? ad.text : ""
    Accessible.description: Texts.of("Ad")
    onClicked: ad.click()

    background: Rectangle {
        color: banner.hovered || banner.down ? banner.hoveredFill : banner.fill
        // It ends with the window.
        FocusRing { shown: banner.visualFocus; anchors.margins: 2 }
    }

    contentItem: Content {
        text: banner.text
        picture: banner.ad ? banner.ad.picture : ""
    }
}
