import QtQuick
import Anadrome

// An ad in its room, labelled as one; nothing where none has come.
Rectangle {
    id: banner

    property BannerItem view: null

    visible: view !== null && view.filled
    height: view ? view.height : 0
    color: Theme.surface
    Label {
        anchors { fill: parent; leftMargin: Theme.edge + mark.width; rightMargin: Theme.gap }
        verticalAlignment: Text.AlignVCenter
        text: banner.view ? banner.view.text : ""
        elide: Text.ElideRight
    }
    Label {
        id: mark
        x: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        text: Texts.of("Ad")
        color: Theme.secondary
        font.pixelSize: Theme.smallSize
    }
    TapHandler { onTapped: banner.view.click() }
}
