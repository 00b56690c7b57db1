import QtQuick
import Anadrome

// What lies over all screens, and keeps the hand from them.
FocusScope {
    id: place

    required property ShownScreen screen
    // Whether nothing lies over it.
    required property bool isUppermost

    enabled: isUppermost
    onEnabledChanged: if (enabled) forceActiveFocus()
    opacity: 0
    Behavior on opacity { NumberAnimation { duration: Theme.appear; easing.type: Easing.OutCubic } }
    Keys.onEscapePressed: screen.close()

    Component.onCompleted: {
        loader.setSource("screens/" + screen.kind + ".qml", { screen: screen })
        opacity = 1
        if (enabled)
            forceActiveFocus()
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }
    Rectangle { anchors.fill: parent; color: Theme.veil }
    Loader {
        id: loader
        anchors.fill: parent
        focus: true
    }
}
