import QtQuick
import Anadrome

// Where a clip comes from.
FocusScope {
    id: title

    required property TitleScreen screen
    required property DesktopHost host
    property bool isSeen: true
    readonly property bool isWide: width >= Theme.wideFrom

    focus: true

    ScrollPlace {
        anchors.fill: parent
        contentHeight: Math.max(height, column.implicitHeight + 2 * Theme.edge)

        Column {
            id: column
            width: Math.min(parent.width - 2 * Theme.edge, title.isWide ? Theme.wideColumn : Theme.column)
            x: (parent.width - width) / 2
            y: Math.max(Theme.edge, Math.min((parent.height - implicitHeight) / 2, 120))
            spacing: Theme.gap

            Item {
                width: parent.width
                height: Math.max(names.implicitHeight, settings.height)
                Column {
                    id: names
                    width: parent.width - settings.width - Theme.near
                    spacing: 4
                    Label {
                        text: Texts.of("AppName")
                        font.pixelSize: Theme.titleSize
                        font.weight: Font.DemiBold
                    }
                    Label {
                        width: parent.width
                        text: Texts.of("Promise")
                        color: Theme.secondary
                    }
                }
                IconButton {
                    id: settings
                    objectName: "infoButton"
                    anchors.right: parent.right
                    anchors.rightMargin: -10
                    view: title.screen.infoButton
                    name: Texts.of("Settings")
                    symbol: "settings"
                }
            }
            Item { width: 1; height: Theme.near }
            Flow {
                id: cards
                readonly property int columns: title.isWide ? 3 : 1
                // Cards beside each other are equally high.
                readonly property real tallest: Math.max(camera.implicitHeight, library.implicitHeight,
                                                         files.implicitHeight)
                readonly property real cardWidth: (width - (columns - 1) * spacing) / columns
                width: parent.width
                spacing: Theme.between
                IntakeCard {
                    id: camera
                    width: cards.cardWidth
                    height: isTall ? cards.tallest : implicitHeight
                    isTall: title.isWide
                    objectName: "cameraButton"
                    view: title.screen.cameraButton
                    symbol: "camera"
                    notice: title.screen.cameraNotice.text
                }
                IntakeCard {
                    id: library
                    width: cards.cardWidth
                    height: isTall ? cards.tallest : implicitHeight
                    isTall: title.isWide
                    objectName: "libraryButton"
                    view: title.screen.libraryButton
                    symbol: "library"
                }
                IntakeCard {
                    id: files
                    width: cards.cardWidth
                    height: isTall ? cards.tallest : implicitHeight
                    isTall: title.isWide
                    objectName: "iCloudButton"
                    view: title.screen.iCloudButton
                    symbol: "folder"
                    notice: Texts.of("DropHint")
                }
            }
            Item { width: 1; height: Theme.near }
            Label { id: quality; view: title.screen.videoQualityLabel; font.weight: Font.DemiBold }
            Segments {
                objectName: "videoQualitySegmentedControl"
                width: Math.min(parent.width, Theme.column)
                view: title.screen.videoQualitySegmentedControl
                name: quality.text
            }
            AppStrip {
                width: parent.width
                screen: title.screen
            }
            Item { width: 1; height: Theme.near }
            PushButton {
                objectName: "shareAppButton"
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(implicitWidth, parent.width)
                view: title.screen.shareAppButton
                symbol: "square.and.arrow.up"
                ink: Theme.secondary
            }
        }
    }
}
