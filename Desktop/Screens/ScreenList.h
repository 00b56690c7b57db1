#pragma once

#include "Desktop/Screens/ShownScreen.h"

#include <QAbstractListModel>
#include <vector>

namespace anadrome::desktop {

/// Screens that lie on each other, the rearmost first, under the role "screen". Owns them. Main thread only.
class ScreenList : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the host")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// The foremost; null if there is none.
    Q_PROPERTY(anadrome::desktop::ShownScreen* top READ top NOTIFY countChanged)

public:
    using QAbstractListModel::QAbstractListModel;

    int count() const { return static_cast<int>(m_screens.size()); }
    ShownScreen* top() const { return m_screens.empty() ? nullptr : m_screens.back(); }
    const std::vector<ShownScreen*>& screens() const { return m_screens; }

    void append(const std::shared_ptr<UIViewController>& controller);
    /// Without effect for a controller that isn't in the list.
    void remove(const UIViewController& controller);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override { return {{Qt::UserRole, "screen"}}; }

Q_SIGNALS:
    void countChanged();

private:
    std::vector<ShownScreen*> m_screens;
};

} // namespace anadrome::desktop
