import QtQuick
import Anadrome

Window {
    id: window

    required property DesktopHost host
    required property CloseQuestion closeQuestion
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
    onClosing: close => close.accepted = closeQuestion.mayClose()

    Connections {
        target: window.closeQuestion
        function onClosing() { window.close() }
    }
    Connections {
        target: window.host
        function onNoticeGiven(text) { notice.show(text) }
    }
    Shortcut {
        sequences: [StandardKey.Paste]
        onActivated: window.host.pasteClip()
    }

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
        // What lay over them took the keyboard.
        onEnabledChanged: if (enabled) places.itemAt(places.count - 1).forceActiveFocus()
        Repeater {
            id: places
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
    CloseDialog {
        anchors.fill: parent
        question: window.closeQuestion
    }
    Notice {
        id: notice
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: parent.top
        anchors.topMargin: Theme.touch + Theme.edge
    }
    DropFrame {
        anchors.fill: parent
        visible: drop.isWelcome
    }
}
