import QtQuick
import Anadrome

// All that is chosen on the Edit screen.
Column {
    id: controls

    required property ShownScreen screen

    spacing: Theme.gap

    Column {
        width: parent.width
        spacing: Theme.near
        Item {
            width: parent.width
            height: Math.max(caption.implicitHeight, chosen.implicitHeight)
            Label { id: caption; view: controls.screen.view("outputTypeLabel"); font.weight: Font.DemiBold }
            Label {
                id: chosen
                view: controls.screen.view("outputTypeValueLabel")
                anchors { right: parent.right; left: caption.right; leftMargin: Theme.near }
                horizontalAlignment: Text.AlignRight
                color: Theme.secondary
            }
        }
        Segments {
            objectName: "outputTypeSegmentedControl"
            width: parent.width
            view: controls.screen.view("outputTypeSegmentedControl")
            name: caption.text
        }
        Label {
            view: controls.screen.view("outputTypeNoticeLabel")
            width: parent.width
            color: Theme.secondary
            font.pixelSize: Theme.smallSize
        }
    }
    SpeedSlider {
        objectName: "reverseSpeedSlider"
        width: parent.width
        caption: controls.screen.view("reverseSpeedLabel")
        factor: controls.screen.view("reverseSpeedValueLabel")
        view: controls.screen.view("reverseSpeedSlider")
        fill: Theme.backward
        glyph: "◁"
    }
    SpeedSlider {
        objectName: "normalSpeedSlider"
        width: parent.width
        caption: controls.screen.view("normalSpeedLabel")
        factor: controls.screen.view("normalSpeedValueLabel")
        view: controls.screen.view("normalSpeedSlider")
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
            view: controls.screen.view("fileTypeSegmentedControl")
            name: container.text
        }
    }
    Item {
        width: parent.width
        height: Math.max(Theme.touch, keep.implicitHeight)
        Label {
            id: keep
            view: controls.screen.view("exifLabel")
            anchors { left: parent.left; right: exif.left; rightMargin: Theme.between
                      verticalCenter: parent.verticalCenter }
        }
        Toggle {
            id: exif
            objectName: "exifSwitch"
            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            view: controls.screen.view("exifSwitch")
            text: keep.text
        }
    }
}
