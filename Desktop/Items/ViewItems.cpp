#include "Desktop/Items/ViewItems.h"

#include "Desktop/Items/BannerItem.h"
#include "Desktop/Items/ControlItems.h"
#include "Desktop/Items/PlayerItem.h"
#include "Desktop/Items/TableItem.h"
#include "Desktop/Items/TextItems.h"
#include "Platform/AVKit/AVPlayerLayerView.h"
#include "Platform/Services/Ads/GADBannerView.h"
#include "Platform/UIKit/UIButton.h"
#include "Platform/UIKit/UISegmentedControl.h"
#include "Platform/UIKit/UISlider.h"
#include "Platform/UIKit/UISwitch.h"
#include "Platform/UIKit/UITableView.h"

namespace anadrome::desktop {

namespace {

using Maker = ViewItem* (*)(const std::shared_ptr<UIView>& view, QObject* parent);

/// Null for a view of another kind.
template <class View, class Item>
ViewItem* makeItem(const std::shared_ptr<UIView>& view, QObject* parent) {
    return dynamic_cast<View*>(view.get()) ? new Item(view, parent) : nullptr;
}

constexpr Maker makers[] = {
    makeItem<UILabel, LabelItem>,        makeItem<UIButton, ButtonItem>,
    makeItem<UISlider, SliderItem>,      makeItem<UISegmentedControl, SegmentsItem>,
    makeItem<UISwitch, SwitchItem>,      makeItem<UIImageView, ImageItem>,
    makeItem<UITableView, TableItem>,    makeItem<AVPlayerLayerView, PlayerItem>,
    makeItem<GADBannerView, BannerItem>, makeItem<UIView, ViewItem>,
};

} // namespace

ViewItem* makeViewItem(const std::shared_ptr<UIView>& view, QObject* parent) {
    for (const Maker make : makers)
        if (ViewItem* item = make(view, parent))
            return item;
    return nullptr;
}

} // namespace anadrome::desktop
