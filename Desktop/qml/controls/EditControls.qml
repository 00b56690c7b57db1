import QtQuick
import Anadrome

// All that is chosen on the Edit screen.
Column {
    id: controls

    required property EditScreen screen

    spacing: Theme.gap

    Column {
        width: parent.width
        spacing: Theme.near
        Item {
            width: parent.width
            height: Math.max(caption.implicitHeight, chosen.implicitHeight)
            Label { id: caption; view: controls.screen.outputTypeLabel; font.weight: Font.DemiBold }
            Label {
                id: chosen
                view: controls.screen.outputTypeValueLabel
                anchors { right: parent.right; left: caption.right; leftMargin: Theme.near }
                horizontalAlignment: Text.AlignRight
                color: Theme.secondary
            }
        }
        Segments {
            objectName: "outputTypeSegmentedControl"
            width: parent.width
            view: controls.screen.outputTypeSegmentedControl
            name: caption.text
        }
        Label {
            view: controls.screen.outputTypeNoticeLabel
            width: parent.width
            color: Theme.secondary
            font.pixelSize: Theme.smallSize
        }
    }
    SpeedSlider {
        objectName: "reverseSpeedSlider"
        width: parent.width
        caption: controls.screen.reverseSpeedLabel
        factor: controls.screen.reverseSpeedValueLabel
        view: controls.screen.reverseSpeedSlider
        fill: Theme.backward
        glyph: "◁"
    }
    SpeedSlider {
        objectName: "normalSpeedSlider"
        width: parent.width
        caption: controls.screen.normalSpeedLabel
        factor: controls.screen.normalSpeedValueLabel
        view: controls.screen.normalSpeedSlider
        fill: Theme.forward
        glyph: "▷"
    }
    Item {
        width: parent.width
        height: Theme.touch
        Label { id: container; anchors.verticalCenter: parent.verticalCenter; text: Texts.of("FileType") }
        Segments {
            objectName: "fileTypeSegmentedControl"
            anchors.right: parent.right
            width: 148
            view: controls.screen.fileTypeSegmentedControl
            name: container.text
        }
    }
    Item {
        width: parent.width
        height: Math.max(Theme.touch, keep.implicitHeight)
        Label {
            id: keep
            view: controls.screen.exifLabel
            anchors { left: parent.left; right: exif.left; rightMargin: Theme.between
                      verticalCenter: parent.verticalCenter }
        }
        Toggle {
            id: exif
            objectName: "exifSwitch"
            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            view: controls.screen.exifSwitch
            text: keep.text
        }
    }
}
