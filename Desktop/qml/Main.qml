pragma ComponentBehavior: Bound
import QtQuick
import Anadrome

Window {
    id: window

    required property DesktopHost host
    required property CloseQuestion closeQuestion
    // From the top: the question, the busy overlay, what is presented, the screens. Hand and keyboard belong
    // to the uppermost; each takes the keyboard as it is enabled.
    readonly property bool isAsked: closeQuestion.asked
    readonly property bool isBusy: host.hud.visible
    readonly property int overCount: host.presented.count
    readonly property bool isCovered: isAsked || isBusy || overCount > 0
    readonly property string clipName: (host.stack.top as EditScreen)?.clipName ?? ""

    width: 420
    height: 860
    minimumWidth: 360
    minimumHeight: 600
    visible: true
    title: (clipName ? clipName + " – " : "") + Texts.of("AppName")
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
    // The enum isn't found by qmllint of Qt 6.4.
    Shortcut {
        sequences: [StandardKey.Paste] // qmllint disable unqualified
        onActivated: window.host.pasteClip()
    }
    Shortcut {
        sequences: [StandardKey.Open] // qmllint disable unqualified
        onActivated: if (window.host.acceptsClip()) choice.open()
    }
    Shortcut {
        sequences: ["Alt+Left", "Back"]
        enabled: !window.isCovered
        onActivated: window.host.back()
    }
    Shortcut {
        sequences: ["Ctrl+W", "Ctrl+Q"]
        onActivated: window.close()
    }
    ClipDialog {
        id: choice
        onAccepted: window.host.openClip(selectedFile)
    }

    DropArea {
        id: drop
        property bool isWelcome: false
        anchors.fill: parent
        onEntered: drag => {
            isWelcome = drag.hasUrls && ClipFiles.mayBeClip(drag.urls[0]) && window.host.acceptsClip()
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
        Keys.onEscapePressed: event => {
            // Not by the rest of a long press that stopped a job.
            if (!event.isAutoRepeat)
                window.host.back()
        }
        TapHandler {
            acceptedButtons: Qt.BackButton
            onTapped: window.host.back()
        }
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
            isUppermost: index === window.overCount - 1 && !window.isBusy && !window.isAsked
        }
    }
    HudOverlay {
        anchors.fill: parent
        enabled: window.isBusy && !window.isAsked
        hud: window.host.hud
        job: window.host.job
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
