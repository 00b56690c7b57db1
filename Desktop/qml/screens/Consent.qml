import QtQuick
import Anadrome

// What the user's data may be used for: accepting and refusing are the same size.
FocusScope {
    id: consent

    required property ConsentScreen screen
    readonly property LabelItem heading: screen.view("consentTitle")
    readonly property LabelItem question: screen.view("consentMessage")

    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: heading.text
    Accessible.description: question.text

    Card {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.edge, 420)
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
                    view: consent.heading
                    font.pixelSize: Theme.headSize
                    font.weight: Font.DemiBold
                }
                Label { width: parent.width; view: consent.question; color: Theme.secondary }
                Repeater {
                    model: consent.screen.purposeCount
                    Item {
                        id: row
                        required property int index
                        readonly property LabelItem purpose: consent.screen.view("consentPurpose" + index + "Label")
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
                            view: consent.screen.view(objectName)
                            text: name.text
                        }
                    }
                }
                Row {
                    id: answers
                    width: parent.width
                    spacing: 12
                    component Answer: QuietButton {
                        width: (answers.width - answers.spacing) / 2
                        height: 52
                        view: consent.screen.view(objectName)
                    }
                    Answer { objectName: "consentAccept"; focus: true }
                    Answer { objectName: "consentRefuse" }
                }
                PushButton {
                    objectName: "consentManage"
                    width: parent.width
                    view: consent.screen.view(objectName)
                    ink: Theme.secondary
                }
                QuietButton {
                    objectName: "consentConfirm"
                    width: parent.width
                    height: 52
                    view: consent.screen.view(objectName)
                }
            }
        }
    }
}
