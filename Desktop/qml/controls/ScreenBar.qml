import QtQuick
import Anadrome

// The bar at the top of a screen: the way back, and what the screen is.
Item {
    id: bar

    property DesktopHost host: null
    property string title

    implicitHeight: Theme.bar

    IconButton {
        objectName: "backButton"
        anchors { left: parent.left; leftMargin: Theme.near; verticalCenter: parent.verticalCenter }
        name: Texts.of("Back")
        symbol: "back"
        onClicked: bar.host.back()
    }
    Label {
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 2 * (Theme.touch + Theme.gap))
        text: bar.title
        font.weight: Font.DemiBold
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
    }
}
