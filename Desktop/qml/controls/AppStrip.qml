import QtQuick
import Anadrome

// The maker's other programs that are deployed, as a row of small cards.
Column {
    id: strip

    required property ShownScreen screen

    readonly property LabelItem heading: screen.view("moreAppsLabel")

    visible: heading.shown
    spacing: Theme.near

    Label { view: strip.heading; font.weight: Font.DemiBold }
    Flow {
        width: parent.width
        spacing: Theme.near
        Repeater {
            model: 5
            QuietButton {
                required property int index
                readonly property LabelItem caption: strip.screen.view("app" + (index + 1) + "Label")
                objectName: "app" + (index + 1) + "Button"
                view: strip.screen.view(objectName)
                text: caption.text
            }
        }
    }
}
