#include "Desktop/Items/TextItems.h"

namespace anadrome::desktop {

QString LabelItem::text() const {
    return ask<UILabel>([](UILabel& label) { return QString::fromStdString(label.text()); });
}

bool LabelItem::isEnabled() const {
    return ask<UILabel>([](UILabel& label) { return label.isEnabled(); });
}

QString ButtonItem::title() const {
    return ask<UIButton>(
        [](UIButton& button) { return QString::fromStdString(button.titleLabel()->text()); });
}

void ButtonItem::tap() {
    act<UIButton>([](UIButton& button) { button.tap(); });
}

QString ImageItem::symbol() const {
    return ask<UIImageView>([](UIImageView& view) {
        return view.image() ? QString::fromStdString(view.image()->systemName()) : QString();
    });
}

} // namespace anadrome::desktop
