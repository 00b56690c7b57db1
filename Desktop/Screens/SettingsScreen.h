#pragma once

#include "Desktop/Items/TableItem.h"
#include "Desktop/Screens/ShownScreen.h"

#include <QVariantList>

namespace anadrome::desktop {

/// The list of ways to the program's makers, on a stack of its own.
class SettingsScreen : public anadrome::desktop::ShownScreen {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(anadrome::desktop::TableItem* tableView MEMBER tableView CONSTANT)
    /// The sections of the table from top to bottom, each a list of its rows (TableRow). A row that opens an
    /// address is left out if none is deployed, and so is a section without rows.
    Q_PROPERTY(QVariantList sections READ sections NOTIFY sectionsChanged)

public:
    SettingsScreen(const std::shared_ptr<UIViewController>& controller, QString kind, QObject* parent);

    QVariantList sections() const;
    /// The button in the stack's bar.
    void close() override;

    TableItem* const tableView;

Q_SIGNALS:
    void sectionsChanged();
};

} // namespace anadrome::desktop
