pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Anadrome

// One of a few. A single stop of the tab key; the arrow keys move the choice.
Rectangle {
    id: control

    required property SegmentsItem view
    property string name

    // The glyphs of the directions are in their colours.
    function coloured(title) {
        return title.replace(/◁/g, "<font color='" + Theme.backward + "'>◁</font>")
                    .replace(/▷/g, "<font color='" + Theme.forward + "'>▷</font>")
    }
    function choose(index) {
        const segment = segments.itemAt(index)
        if (!segment)
            return
        segment.forceActiveFocus(Qt.TabFocusReason)
        view.tap(index)
    }

    implicitHeight: Theme.touch
    implicitWidth: 240
    radius: Theme.controlRadius
    color: Theme.well
    opacity: Theme.strength(view)
    Keys.onLeftPressed: choose(view.selected - 1)
    Keys.onRightPressed: choose(view.selected + 1)
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    Row {
        id: row
        anchors.fill: parent
        anchors.margins: 3
        Repeater {
            id: segments
            model: control.view.titles.length
            T.RadioButton {
                id: segment
                required property int index
                readonly property bool chosen: index === control.view.selected
                readonly property bool isStop: index === Math.max(0, control.view.selected)
                width: row.width / control.view.titles.length
                height: row.height
                text: control.view.titles[index] ?? ""
                focusPolicy: isStop ? Qt.StrongFocus : Qt.ClickFocus
                enabled: control.view.enabled
                hoverEnabled: true
                checked: chosen
                onClicked: {
                    control.view.tap(index)
                    // A click changes it here as well.
                    checked = Qt.binding(() => chosen)
                }
                // As in Operable, which can't be a radio button.
                Accessible.name: text
                Accessible.onPressAction: if (enabled) clicked()
                Accessible.onToggleAction: if (enabled) clicked()
                background: Rectangle {
                    readonly property color fill: segment.chosen ? Theme.chosen
                                                  : segment.hovered ? Theme.hovered : Theme.well
                    radius: Theme.controlRadius - row.anchors.margins
                    color: segment.down ? Theme.pressed(fill, Theme.text) : fill
                    border.width: segment.chosen ? 1 : 0
                    border.color: Theme.chosenEdge
                    FocusRing { shown: segment.visualFocus; reach: 0; radius: parent.radius }
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
