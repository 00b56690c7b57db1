#include "Desktop/Screens/ScreenList.h"

#include "Desktop/Screens/MakeScreen.h"

#include <algorithm>

namespace anadrome::desktop {

void ScreenList::append(const std::shared_ptr<UIViewController>& controller) {
    beginInsertRows({}, count(), count());
    m_screens.push_back(makeScreen(controller, this));
    endInsertRows();
    Q_EMIT countChanged();
}

void ScreenList::remove(const UIViewController& controller) {
    const auto place =
        std::ranges::find_if(m_screens, [&](const ShownScreen* screen) { return screen->isOf(controller); });
    if (place == m_screens.end())
        return;
    ShownScreen* screen = *place;
    const auto row = static_cast<int>(place - m_screens.begin());
    beginRemoveRows({}, row, row);
    m_screens.erase(place);
    endRemoveRows();
    Q_EMIT countChanged();
    // The storyboard that shows it may be in the middle of a call.
    screen->deleteLater();
}

int ScreenList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant ScreenList::data(const QModelIndex& index, int role) const {
    if (role != Qt::UserRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    return QVariant::fromValue(m_screens[static_cast<std::size_t>(index.row())]);
}

} // namespace anadrome::desktop
