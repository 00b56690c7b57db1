import QtQuick
import Anadrome

Window {
    id: window

    required property DesktopHost host
    readonly property bool isCovered: host.presented.count > 0 || host.hud.visible

    width: 420
    height: 860
    minimumWidth: 360
    minimumHeight: 600
    visible: true
    title: Texts.of("AppName")
    color: Theme.background
    onWidthChanged: host.setSize(width, height)
    onHeightChanged: host.setSize(width, height)

    DropArea {
        id: drop
        property bool isWelcome: false
        anchors.fill: parent
        onEntered: drag => {
            isWelcome = drag.hasUrls && window.host.acceptsClip()
            drag.accepted = isWelcome
        }
        onExited: isWelcome = false
        onDropped: drag => {
            isWelcome = false
            window.host.openClip(drag.urls[0])
        }
    }

    Item {
        id: screens
        anchors.fill: parent
        enabled: !window.isCovered
        Repeater {
            model: window.host.stack
            StackPlace {
                required property int index
                width: screens.width
                height: screens.height
                depth: window.host.stack.count - 1 - index
                isFirst: index === 0
                host: window.host
            }
        }
    }
    Repeater {
        model: window.host.presented
        OverPlace {
            required property int index
            width: screens.width
            height: screens.height
            isTop: index === window.host.presented.count - 1
        }
    }
    HudOverlay {
        anchors.fill: parent
        hud: window.host.hud
    }
    DropFrame {
        anchors.fill: parent
        visible: drop.isWelcome
    }
}
