pragma ComponentBehavior: Bound
import QtQuick
import Anadrome

// The list of ways to the program's makers.
Sheet {
    id: settings

    required property SettingsScreen screen

    title: Texts.of("Settings")
    leaveText: Texts.of("Done")
    onClosed: screen.close()

    Repeater {
        model: settings.screen.sections
        RowGroup {
            id: section
            required property var modelData
            Repeater {
                model: section.modelData
                ListRow {
                    required property tableRow modelData
                    text: modelData.text
                    symbol: modelData.symbol
                    onClicked: settings.screen.tableView.tapRow(modelData.section, modelData.row)
                }
            }
        }
    }
}
