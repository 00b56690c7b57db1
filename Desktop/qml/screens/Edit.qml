import QtQuick
import Anadrome

// What movie is made of the clip.
FocusScope {
    id: edit

    required property EditScreen screen
    required property DesktopHost host
    property bool isSeen: true
    readonly property bool isWide: width >= Theme.wideFrom
    readonly property PlayerItem player: screen.playerView
    readonly property SliderItem seekBar: screen.videoSeekBar
    readonly property BannerItem banner: screen.bannerView

    function step(pictures) {
        player.step(seekBar, pictures)
    }

    focus: true
    // As in editors: J runs backward, K pauses, L goes toward the clip's end, which is to the left.
    Keys.onPressed: event => {
        const once = deed => { if (!event.isAutoRepeat) deed() }
        const deeds = {
            [Qt.Key_Space]: () => once(() => player.tap()),
            [Qt.Key_Left]: () => step(-1),
            [Qt.Key_Right]: () => step(1),
            [Qt.Key_J]: () => player.play(),
            [Qt.Key_K]: () => player.pause(),
            [Qt.Key_L]: () => step(-1)
        }
        event.accepted = event.key in deeds && !(event.modifiers & ~Qt.KeypadModifier)
        if (event.accepted)
            deeds[event.key]()
    }

    ScreenBar {
        id: bar
        width: parent.width
        host: edit.host
        title: Texts.of("EditTitle")
    }

    Rectangle {
        id: preview
        // At most half, and some of the controls are to be seen as well.
        readonly property real most: Math.max(140, Math.min((edit.height - bar.height) / 2,
                                                           edit.height - bar.height - foot.height - 250))
        anchors.top: bar.bottom
        width: edit.isWide ? edit.width - Theme.controlColumn : edit.width
        height: edit.isWide ? edit.height - bar.height
                            : Math.min(most, width / edit.player.aspect + seek.height)
        color: Theme.stage

        EditPictures {
            objectName: "playerView"
            anchors { left: parent.left; right: parent.right; top: parent.top; bottom: seek.top }
            view: edit.player
            icon: edit.screen.playPauseButtonImageView
            isSeen: edit.isSeen
        }
        SeekBar {
            id: seek
            objectName: "videoSeekBar"
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Theme.gap
                      bottomMargin: 0; topMargin: 0 }
            from: edit.seekBar.from
            to: edit.seekBar.to
            value: edit.seekBar.value
            fill: Theme.pictureBackward
            groove: Theme.pictureGroove
            ink: Theme.pictureSecondary
            onStepped: steps => edit.step(steps)
            onTaken: edit.seekBar.press()
            onMoved: value => edit.seekBar.moveTo(value)
            onLetGo: edit.seekBar.release()
            onLost: edit.seekBar.cancel()
        }
    }

    ScrollPlace {
        id: scroll
        anchors {
            left: edit.isWide ? preview.right : parent.left
            right: parent.right
            top: edit.isWide ? bar.bottom : preview.bottom
            bottom: foot.top
        }
        contentHeight: controls.implicitHeight + 2 * Theme.gap
        clip: true
        EditControls {
            id: controls
            x: (scroll.width - width) / 2
            y: Theme.gap
            width: Math.min(scroll.width - 2 * Theme.edge, Theme.column)
            screen: edit.screen
        }
    }
    Rectangle {
        anchors { left: scroll.left; right: scroll.right; bottom: scroll.bottom }
        height: 1
        color: Theme.line
        visible: scroll.contentHeight > scroll.height
    }

    Item {
        id: foot
        anchors { left: scroll.left; right: parent.right; bottom: parent.bottom }
        // The button keeps its distance from the foot whether a banner has come or not.
        height: create.height + Theme.gap + (edit.banner.offered ? edit.screen.createButtonDistance : Theme.gap)
        PrimaryButton {
            id: create
            objectName: "createButton"
            anchors.horizontalCenter: parent.horizontalCenter
            y: Theme.gap
            width: controls.width
            view: edit.screen.createButton
        }
        Banner {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            ad: edit.banner
        }
    }
}
