import QtQuick
import Anadrome

// A screen's place in the stack: it comes in from the right, and makes room to the left.
FocusScope {
    id: place

    required property ShownScreen screen
    required property DesktopHost host
    // How many screens lie over it.
    required property int depth
    property bool isFirst: false
    property bool hasCome: isFirst

    x: hasCome ? (depth > 0 ? -width / 3 : 0) : width
    opacity: depth > 0 || !hasCome ? 0 : 1
    visible: opacity > 0
    enabled: depth === 0
    onEnabledChanged: if (enabled) forceActiveFocus()
    Behavior on x { NumberAnimation { duration: Theme.move; easing.type: Easing.OutCubic } }
    Behavior on opacity { NumberAnimation { duration: Theme.appear; easing.type: Easing.OutCubic } }

    Component.onCompleted: {
        loader.setSource("screens/" + screen.kind + ".qml",
                         { screen: screen, host: host, isSeen: Qt.binding(() => place.depth === 0) })
        hasCome = true
        if (enabled)
            forceActiveFocus()
    }

    Loader {
        id: loader
        anchors.fill: parent
        focus: true
    }
}
