import QtQuick
import QtQuick.Templates as T
import Anadrome

Rectangle {
    id: control

    required property SegmentsItem view
    property string name

    // The glyphs of the directions are in their colours.
    function coloured(title) {
        return title.replace(/◁/g, "<font color='" + Theme.backward + "'>◁</font>")
                    .replace(/▷/g, "<font color='" + Theme.forward + "'>▷</font>")
    }

    implicitHeight: Theme.touch
    implicitWidth: 240
    radius: Theme.controlRadius
    color: Theme.well
    opacity: view.alpha
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    Row {
        id: row
        anchors.fill: parent
        anchors.margins: 3
        Repeater {
            model: control.view.titles.length
            T.AbstractButton {
                id: segment
                required property int index
                readonly property bool chosen: index === control.view.selected
                width: row.width / control.view.titles.length
                height: row.height
                text: control.view.titles[index] ?? ""
                focusPolicy: Qt.TabFocus
                enabled: control.view.enabled
                hoverEnabled: true
                onClicked: control.view.tap(index)
                Accessible.role: Accessible.RadioButton
                Accessible.name: text
                Accessible.checkable: true
                Accessible.checked: chosen
                background: Rectangle {
                    radius: Theme.controlRadius - 3
                    color: segment.chosen ? Theme.chosen : "transparent"
                    border.width: segment.chosen ? 1 : 0
                    border.color: Theme.chosenEdge
                    FocusRing { of: segment; anchors.margins: 0; radius: parent.radius }
                }
                contentItem: Text {
                    text: control.coloured(segment.text)
                    textFormat: Text.StyledText
                    color: segment.chosen ? Theme.text : Theme.secondary
                    font.pixelSize: /[◁▷]/.test(segment.text) ? Theme.headSize : Theme.textSize
                    font.weight: segment.chosen ? Font.DemiBold : Font.Normal
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: Theme.smallSize
                    elide: Text.ElideRight
                }
            }
        }
    }
}
