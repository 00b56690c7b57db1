import QtQuick
import Anadrome

// The list of ways to the program's makers.
Sheet {
    id: settings

    required property SettingsScreen screen
    readonly property TableItem table: screen.view("tableView")
    // The rows of each section, in the table's order.
    readonly property var sections: {
        const found = []
        for (const row of table.rows.filter(row => screen.leads(row.section, row.row))) {
            if (found.length === 0 || found[found.length - 1][0].section !== row.section)
                found.push([])
            found[found.length - 1].push(row)
        }
        return found
    }

    title: Texts.of("Settings")
    leaveText: Texts.of("Done")
    onClosed: screen.close()

    Repeater {
        model: settings.sections
        RowGroup {
            required property var modelData
            rows: modelData
            onChosen: row => settings.table.tapRow(row.section, row.row)
        }
    }
}
