pragma ComponentBehavior: Bound
import QtQuick
import Anadrome

// What the user's data may be used for: accepting and refusing are the same size.
FocusScope {
    id: consent

    required property ConsentScreen screen

    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: screen.title.text
    Accessible.description: screen.message.text

    component Measure: TextMetrics {
        font { pixelSize: Theme.textSize; weight: Font.DemiBold }
    }
    Measure { id: accept; text: consent.screen.accept.title }
    Measure { id: refuse; text: consent.screen.refuse.title }

    Card {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.edge, Theme.consentWidth)
        height: Math.min(parent.height - 2 * Theme.edge, column.implicitHeight + 2 * Theme.edge)
        color: Theme.surface
        clip: true

        ScrollPlace {
            anchors.fill: parent
            contentHeight: column.implicitHeight + 2 * Theme.edge

            Column {
                id: column
                x: Theme.edge
                y: Theme.edge
                width: parent.width - 2 * Theme.edge
                spacing: Theme.gap
                Label {
                    width: parent.width
                    view: consent.screen.title
                    font.pixelSize: Theme.headSize
                    font.weight: Font.DemiBold
                }
                Label { width: parent.width; view: consent.screen.message; color: Theme.secondary }
                Repeater {
                    model: consent.screen.purposeLabels.length
                    Item {
                        id: row
                        required property int index
                        readonly property LabelItem purpose: consent.screen.purposeLabels[index]
                        width: column.width
                        height: Math.max(Theme.touch, name.implicitHeight)
                        visible: purpose.shown
                        Label {
                            id: name
                            view: row.purpose
                            anchors { left: parent.left; right: answer.left; rightMargin: 12
                                      verticalCenter: parent.verticalCenter }
                        }
                        Toggle {
                            id: answer
                            objectName: "consentPurpose" + row.index + "Switch"
                            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                            view: consent.screen.purposeSwitches[row.index]
                            text: name.text
                        }
                    }
                }
                // Beside each other if both have the room, else both in full width. Neither has the keyboard:
                // the form comes by itself, and a key meant for something else is no answer.
                Grid {
                    id: answers
                    readonly property real half: (width - spacing) / 2
                    readonly property bool fit: Math.max(accept.advanceWidth, refuse.advanceWidth)
                                                <= half - 2 * Theme.gap
                    width: parent.width
                    columns: fit ? 2 : 1
                    spacing: 12
                    QuietButton {
                        objectName: "consentAccept"
                        width: answers.fit ? answers.half : answers.width
                        height: Theme.tall
                        view: consent.screen.accept
                    }
                    QuietButton {
                        objectName: "consentRefuse"
                        width: answers.fit ? answers.half : answers.width
                        height: Theme.tall
                        view: consent.screen.refuse
                    }
                }
                PushButton {
                    objectName: "consentManage"
                    width: parent.width
                    view: consent.screen.manage
                    ink: Theme.secondary
                }
                QuietButton {
                    objectName: "consentConfirm"
                    width: parent.width
                    height: Theme.tall
                    view: consent.screen.confirm
                }
            }
        }
    }
}
