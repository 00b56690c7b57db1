pragma ComponentBehavior: Bound
import QtQuick
import Anadrome

// The maker's other programs that are deployed, as a row of small cards.
Column {
    id: strip

    required property TitleScreen screen

    visible: screen.moreAppsLabel.shown
    spacing: Theme.near

    Label { view: strip.screen.moreAppsLabel; font.weight: Font.DemiBold }
    Flow {
        width: parent.width
        spacing: Theme.near
        Repeater {
            model: strip.screen.appButtons.length
            QuietButton {
                required property int index
                objectName: "app" + (index + 1) + "Button"
                view: strip.screen.appButtons[index]
                text: strip.screen.appLabels[index].text
            }
        }
    }
}
