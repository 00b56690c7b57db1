import QtQuick
import Anadrome

// The clip as it runs, with the icon that tells of play and pause over it.
PlayerPictures {
    id: pictures

    required property ImageItem icon
    // What the icon is to have, or has when its fade is over.
    property real alpha: 0

    Accessible.role: Accessible.Button
    Accessible.name: Texts.of("PlayOrPause")
    Accessible.onPressAction: if (enabled) view.tap()
    Component.onCompleted: {
        alpha = icon.alpha
        sign.opacity = alpha
    }

    TapHandler { onTapped: pictures.view.tap() }

    Rectangle {
        id: sign
        anchors.centerIn: parent
        width: 88
        height: 88
        radius: 44
        color: Theme.sign
        objectName: "playPauseSign"
        visible: opacity > 0 && pictures.icon.symbol !== ""
        Icon {
            anchors.centerIn: parent
            name: pictures.icon.symbol
            color: Theme.pictureInk
            size: 64
        }
        NumberAnimation {
            id: fade
            target: sign
            property: "opacity"
            easing.type: Easing.OutQuad
        }
    }
    Connections {
        target: pictures.icon
        // As fast as the screen says.
        function onChanged() {
            if (pictures.icon.alpha === pictures.alpha)
                return
            pictures.alpha = pictures.icon.alpha
            fade.stop()
            fade.to = pictures.alpha
            fade.duration = pictures.icon.duration
            fade.start()
        }
    }
}
